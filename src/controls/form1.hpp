#pragma once

#include <set>

#include "controls/controls.hpp"
#include "controls/list_history.hpp"
#include "controls/list_view.hpp"
#include "controls/tree_view.hpp"
#include "platform/ports.hpp"

namespace controls {

enum class MousePointer { kDefault, kHourglass };

// Where a popup menu opens: at the mouse, or, when the keyboard asked for it, at the current row of
// the list that has the focus, or at the control that has it.
enum class PopupPlace { kPointer, kCurrentRow };

// The factory default of the table configuration, each line ended by CR LF.
extern const std::string_view kDefaultConfiguration;

// A structure text to try the program with before CATIA's is read: five assemblies, 24 parts.
extern const std::string_view kSampleStructure;

// The sub-items of a row of the parts list, ListView1; the row's own text is the part's name.
enum PartField : std::size_t {
    kPosition = 1, // "Poz."
    kQuantity = 2, // "kusů"
    kSheet = 3,    // "List"
    kMaterial = 4, // "Material"
    kSize = 5,     // "Velikost"
    kNote = 6,     // "Poznámka"
};

// The sub-items of a row of the sheet list, ListView3; the row's own text is the sheet's name in
// CATIA, and its tag the mark of a detail sheet.
enum SheetField : std::size_t {
    kNewName = 1, // "Přejmenovaní"
    kSortKey = 2, // without a caption
};

// A row that the mouse went down on, and the first row of that name, which is the one that a drop
// moves. Both by their ids, 0 for none, since the rows may change before the drop.
struct Drag {
    std::uint64_t row = 0;
    std::uint64_t moved = 0;
};

// One run of an event's handler: what the person did, in words, a number of its own, what it has
// announced last on the status line, and what ended it.
struct HandlerRun {
    std::string step;
    std::uint64_t number = 0;
    std::string announcement = {};
    std::optional<automation::RunTimeError> error = {};
};

// An error that has ended an action, for whoever helps the person from afar.
struct LastError {
    automation::RunTimeError error;
    std::string step;
    std::string time;
};

// What is known of the recovery file, which holds what a crash would lose. Times are milliseconds
// of the clock that app/recovery.hpp is told.
struct Recovery {
    bool on = false;                // off until the leftover of the run before is dealt with
    bool leftover_waits = false;    // it was found, and nobody has answered for it yet
    bool leftover_unwanted = false; // and still in the way: it could not be put aside
    // What the form held when the file was written, and when it was looked at last.
    std::uint64_t version = 0;
    std::string configuration;
    std::uint64_t seen_version = 0;
    std::string seen_configuration;
    std::optional<long long> changed_since; // the oldest change that the file lacks
    long long last_change = 0;
    long long last_look = 0;
};

// The preview of the table, in a window of its own.
struct Preview {
    bool open = false;
    bool current_row_only = false; // what "Export 1 tabulky" would make
    // Where its window stands, as the view notes it: the corner in pixels, the size in twips. A
    // width of 0 is a place that the view chooses.
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// The main window: one of each control under its form name, the window's own properties, and the
// values that actions keep between one another.
struct Form1 {
    explicit Form1(const platform::Ports& platform_ports) : ports(platform_ports) {
        // A picker and its button wait for the first click on a row.
        for (Button* apply : {&Command12, &Command13, &Command14, &Command15}) {
            apply->SetEnabled(false);
        }
        Combo5.SetEnabled(true);
    }
    Form1(const Form1&) = delete;
    Form1& operator=(const Form1&) = delete;

    platform::Ports ports;

    // The window. Places and sizes are in twips (1440 to the inch, title bar included); the view
    // sets the design size before the form loads and carries later changes to the screen.
    platform::WindowHandle hWnd = 0;
    std::string Caption;
    bool on_trial = false; // with CATIA's stand-in
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    MousePointer Pointer = MousePointer::kDefault;

    // Set by the view. `show_now` brings the status bar and the mouse pointer to the screen at
    // once, `show_soon` within the blink of an eye, since many texts may follow one another;
    // everything else waits for the next refresh. `before_call` is raised before every call to
    // CATIA.
    std::function<void()> show_now;
    std::function<void()> show_soon;
    std::function<void()> before_call;
    std::function<void(PopupMenu&, PopupPlace)> show_popup;
    std::function<bool(const std::string&)> copy_text; // to the clipboard; whether that is done
    // From there; nothing where no text stands there.
    std::function<std::optional<std::string>()> pasted_text;
    // Show the file dialog; true when a file was chosen, whose name then stands in the dialog.
    std::function<bool(FileDialog&)> show_save_dialog;
    std::function<bool(FileDialog&)> show_open_dialog;

    // Top strip
    CheckBox Check2{"On Top"};
    Button Command18{"min"};

    TabControl SSTab1{{"Strom", "Editace tabulky", "Export tabulky", "Import tabulky", "Sheet"}};
    StatusBar StatusBar1;

    // "Strom"
    Button Command3{"Načtení stromu"};
    Button Command5{"naplneni tree"};
    Button Command4{"Naplň list"};
    Button Command1{"generator"};
    Button Command2{"test rovnani"};
    Button Command26{"procesy"};
    TreeView TreeView1;
    TextBox Text1{std::string(kSampleStructure)};
    ListView ListView2{{"Jmeno", "Kusů"}};
    ListBox List1;

    // "Editace tabulky"
    ListView ListView1{{"Jmeno", "Poz.", "kusů", "List", "Material", "Velikost", "Poznámka"}};
    ComboBox Combo1{"Material", "Material"};
    ComboBox Combo2{"Velikost", "Velikost"};
    ComboBox Combo3{"Poznamka", "Poznamka"};
    ComboBox Combo4{"Kusu", "Kusu"};
    Button Command12{""};
    Button Command13{""};
    Button Command14{""};
    Button Command15{""};
    Button Command17{"Uložení  tabulky"};
    Button Command27{"Otevreni tabulky"};
    FileDialog CMD;
    Button Command39{"Aktualizuj ze stromu"};

    // "Export tabulky"
    TextBox Text2{std::string(kDefaultConfiguration)};
    TextBox Text4{std::string(kDefaultConfiguration)};
    Button Command19{"Reset"};
    Button Command11{"Vytvorení"};
    Button Command16{"Export do tabulky"};
    Button Command30{"Exportovat do tabulky"};
    Button Command7{"Export 1 tabulky"};
    Button Command6{"Export jako text"};
    CheckBox Check3{"Bez překreslování"};
    Button Command8{"text"};
    Button Command37{"Aktualizovat tabulku"};
    ComboBox Combo5{"Rozložení", ""};
    Button Command40{"Uložit"};
    Button Command41{"Smazat"};
    Button Command36{"Náhled"};

    // "Import tabulky"
    Button Command10{"Parametry"};
    Button Command9{"Tabulka"};
    TextBox Text3;
    Button Command38{"Převzít do exportu"};

    // "Sheet"
    ListView ListView3{{"Catia", "Přejmenovaní", ""}};
    Button Command21{"Načíst Sheets z catie"};
    TextBox Text5;
    Button Command28{""};
    Frame Frame1{"Číslovat Sheet od"};
    TextBox Text6;
    Button Command20{"Udělej"};
    Frame Frame2{"Jména z tabulky"};
    CheckBox Check1{"První je sestava "};
    Button Command22{"Udělej"};
    Button Command23{"Přejmenuj Sheet v Catii"};
    Button Command24{"Sheet cislovani"};
    Button Command25{"Sheet nazvy"};
    Button Command34{"Přesun Sheetu v Catii"};
    Button Command33{"Schazi"};
    Frame Frame3{"Pridat Sheety"};
    TextBox Text7;
    Button Command32{"Udělej"};
    Button Command29{"Sheet prehazovani"};
    Button Command31{"Sheet Vytvorit"};
    Button Command35{"Sheet generovat"};

    // Popup menu of the parts list
    MenuItem m_poslat_jako_tabulku{"Poslat jako tabulku", {}};
    MenuItem m_vlozit_do_tabulky{"Poslat do tabulky", {}};
    MenuItem m_od2;
    MenuItem m_Poslat_jako_text{"Poslat jako text", {}};
    MenuItem m_od1;
    MenuItem m_Pridat{"Přidat", {}};
    MenuItem m_Smazat{"Smazat", {}};
    MenuItem m_od3;
    MenuItem m_Zpet{"Zpět", {}};
    MenuItem m_Znovu{"Znovu", {}};
    MenuItem m_od7;
    MenuItem m_Kopirovat_vse{"Kopírovat vše", {}};
    MenuItem m_Vlozit{"Vložit", {}};
    MenuItem m_od8;
    MenuItem m_Smazat_vybrane{"Smazat vybrané", {}};
    MenuItem m_Doplnit_zname{"Doplnit známé", {}};
    MenuItem m_Seradit_jmeno{"Seřadit podle jména", {}};
    MenuItem m_Seradit_material{"Seřadit podle materiálu", {}};
    PopupMenu m_Tabulka{"Tabulka",
                        {&m_poslat_jako_tabulku, &m_vlozit_do_tabulky, &m_od2, &m_Poslat_jako_text,
                         &m_od1, &m_Pridat, &m_Smazat, &m_od3, &m_Zpet, &m_Znovu, &m_od7,
                         &m_Kopirovat_vse, &m_Vlozit, &m_od8, &m_Smazat_vybrane, &m_Doplnit_zname,
                         &m_Seradit_jmeno, &m_Seradit_material}};

    // Popup menus of the buttons that save and open lists, for the keyboard
    MenuItem m_Ulozit_pracovni{"Uložit do pracovního souboru", {}};
    PopupMenu m_Ulozeni{"Uložení", {&m_Ulozit_pracovni}};
    MenuItem m_Otevrit_pracovni{"Otevřít pracovní soubor", {}};
    PopupMenu m_Otevreni{"Otevření", {&m_Otevrit_pracovni}};

    // Popup menu of the sheet list
    MenuItem m_Sheet_pridej{"Pridat", {}};
    MenuItem m_Sheet_smaz{"Smazat", {}};
    MenuItem m_od4;
    MenuItem m_Sheet_zpet{"Zpět", {}};
    MenuItem m_Sheet_znovu{"Znovu", {}};
    MenuItem m_od5;
    MenuItem m_Sheet_vratit_jmena{"Vrátit plánovaná jména", {}};
    PopupMenu m_sheets{"Sheets",
                       {&m_Sheet_pridej, &m_Sheet_smaz, &m_od4, &m_Sheet_zpet, &m_Sheet_znovu,
                        &m_od5, &m_Sheet_vratit_jmena}};

    // Popup menu of the status line
    MenuItem m_Kopirovat_chybu{"Kopírovat poslední chybu", {}};
    MenuItem m_Slozka_protokolu{"Otevřít složku protokolu", {}};
    MenuItem m_od6;
    MenuItem m_Diagnostika{"Diagnostika", {}};
    MenuItem m_O_programu{"O programu", {}};
    PopupMenu m_Stav{
        "Stav", {&m_Kopirovat_chybu, &m_Slozka_protokolu, &m_od6, &m_Diagnostika, &m_O_programu}};

    // Detection of CATIA: whether the enumeration has seen a window of a session, and which ones.
    bool CatiaNalezena = false;
    std::vector<platform::WindowHandle> catia_windows;
    // The name of the document that an action worked on last.
    std::string document_worked_on;

    // The structure walk: the current depth, the assemblies and the leaves met so far.
    int Uroven = 0;
    int PocetSestav = 0;
    int PocetPartu = 0;
    // What the walk that runs has written into Text1.
    std::string walked_text;

    // How often an action has written into a selected table of the drawing: one that reads or makes
    // a table meanwhile may have got a mixture.
    std::uint64_t table_writes = 0;
    // How many actions are at work on a table or, reading one, on a list that is not yet what it is
    // to be.
    int tables_in_work = 0;
    // A list has been written into the drawing: its rows as texts, the name, then the fields by
    // their numbers.
    Event<const std::vector<std::vector<std::string>>&> list_exported;

    // The rows of the parts list that "Tabulka" has taken out and whose successors it still reads.
    std::vector<ListRow> rows_before_reading;
    std::shared_ptr<const NameSet> names_before_reading; // of the tree that they come from

    // The name of the table layout that was loaded or saved last; empty for none.
    std::string layout;

    // Dragging in the parts list and in the sheet list.
    Drag parts_drag;
    Drag sheets_drag;

    // What was looked for in the parts list last.
    std::string looked_for;

    // The new names that the sheet list planned when it was loaded last, by the names of then.
    std::vector<std::pair<std::string, std::string>> planned_names;

    // What the person did with the two lists that are edited, to be taken back.
    ListHistory parts_history{ListView1};
    ListHistory sheets_history{ListView3};

    // How many handlers run inside one another, and the innermost of them. Whether all of them are
    // to end, and whether what runs is putting back what it has changed in CATIA, which it does all
    // the same; whether the person has closed the window, whether Windows ends the session, when no
    // box may open any more, whether the closing steps have begun, and whether they are done.
    int running_handlers = 0;
    HandlerRun innermost;
    std::uint64_t runs = 0; // of handlers so far
    bool stop_requested = false;
    bool putting_back = false;
    bool close_requested = false;
    bool session_ending = false;
    bool closing = false;
    bool unloaded = false;

    std::optional<LastError> last_error;
    std::uint64_t calls = 0; // to CATIA so far

    // Why the list could not be saved when it was to be saved last.
    std::optional<automation::RunTimeError> save_error;
    // The names of the data files that hold what was not read to its end, and is not to be lost.
    std::set<std::string> unread_files;
    std::uint64_t working_saves = 0; // how often the list went to the working file

    Recovery recovery;
    Preview preview;

    // Raises 18 (user interrupt) in the place of every call to CATIA once what runs is to end.
    automation::CallGate call_gate{[this] {
        Raise(before_call);
        if (stop_requested && !putting_back) {
            throw automation::UserInterrupt();
        }
        ++calls;
    }};
};

} // namespace controls
