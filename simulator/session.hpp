// A CATIA V5 session without CATIA: documents loaded from small text files, answering every member
// that the program knows as CATIA does, with a log of the calls and switches that make one fail, or
// take its time.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object.hpp"

namespace simulator {

struct Document;
struct Link;
struct Table;

enum class FaultKind {
    kRefused,  // the member fails: E_FAIL with "The method ... failed"
    kBusy,     // the session rejects the call, and the calls after it, `times` times altogether
    kVanished, // the session's process ends in the call; every later call finds no server
    kSlow,     // the call takes `milliseconds` and then is carried out
    kClosed,   // the active document is closed before the call is carried out
    kDeleted,  // the tables of the active drawing are deleted before the call is carried out
};

struct Fault {
    std::size_t call = 0; // counted from the moment of arming; 1 is the next call, 0 is none
    FaultKind kind = FaultKind::kRefused;
    int times = 1;                             // of kBusy
    std::chrono::milliseconds milliseconds{0}; // of kSlow
};

// What one CATIA does and another does not.
struct Manner {
    // Texts that come as numbers are converted in Czech, the user's language, whatever the call's.
    bool converts_in_users_language = false;
    // Lengths come as they are after a conversion to inches and back: 13.88 as 13.879999999999999.
    bool lengths_through_inches = false;
    // A row's height or a column's width of 0 is automatic: after the largest cell.
    bool zero_is_automatic = false;
    // New sheets stand before the detail sheets, and not behind them.
    bool new_sheets_before_details = false;
    // Texts.Add refuses an empty text.
    bool refuses_empty_texts = false;
    // Line breaks of texts come as CR LF.
    bool line_breaks_are_pairs = false;
    // Documents cannot be changed.
    bool read_only = false;
    // Members that this release lacks, "Selection.Count2".
    std::set<std::string, std::less<>> missing_members;
};

class Session {
  public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Opens a document described by a sample file's content (samples/README.md has the format) and
    // makes it the active one. `file_name` is for messages; the document's name stands in the
    // content. Raises std::runtime_error with file name and line number where it is malformed.
    void LoadDocument(std::string_view file_name, std::string_view content);
    void CloseAllDocuments();
    // Closes the active document; the one that was opened last becomes active.
    void CloseActiveDocument();
    [[nodiscard]] std::vector<std::string> DocumentNames() const;
    // Empty when no document is open.
    [[nodiscard]] std::string ActiveDocumentName() const;
    void Activate(std::string_view document_name);
    // The title of the window that shows the session; it says that it is a simulation.
    [[nodiscard]] std::string WindowTitle() const;

    // The application object, as the Running Object Table hands it out. Raises 429 after the
    // session has vanished.
    [[nodiscard]] automation::ObjectPtr Application();

    // Every member call made, oldest first, as text that shows the kinds of its arguments:
    // `Products.Item(3)`, `DrawingTables.Add(100.0, 100.0, 9, 7, "6.8", 20)`,
    // `DrawingTable.AnchorPoint = 2`. Calls that fail are there too. Members stand under their
    // documented names, however the client spelled them. Look-ups of names, which only calls over
    // COM make, show as `lookup Products.Item`, with the name as the client spelled it.
    [[nodiscard]] const std::vector<std::string>& Log() const;
    void ClearLog();

    // Replaces what was armed before; Arm({}) disarms. A session that has vanished is back
    // afterwards, its documents as they were; objects from before stay dead.
    void Arm(const Fault& fault);

    // The whole content of a drawing as text: sheets, views, tables with sizes, fonts and cells,
    // texts. The active document's where no name is given. It is in the format of the sample files;
    // empty where the document is no drawing.
    [[nodiscard]] std::string DrawingAsText(std::string_view document_name = {}) const;
    // The same of what the session displays: a table whose display is not computed stands there as
    // it was computed last.
    [[nodiscard]] std::string DisplayAsText(std::string_view document_name = {}) const;

    // What a person does in the session's window, with the active document. Each is false where
    // there is no such sheet, view or table; `table` counts from 1.
    bool ActivateSheet(std::string_view sheet_name);
    bool ActivateView(std::string_view sheet_name, std::string_view view_name);
    enum class Selecting {
        kAlone,
        kBeforeItsView, // the table, then its view and the view's texts
        kAfterItsView,
    };
    bool SelectTable(std::string_view sheet_name, std::string_view view_name, std::size_t table,
                     Selecting selecting = Selecting::kAlone);
    void ClearSelection();
    void DeleteTables();
    // Adds `text` to the names of the document (before its extension), its sheets and products.
    void AddToNames(std::string_view text);
    // Null when no document is open.
    [[nodiscard]] const std::shared_ptr<Document>& ActiveDocument() const;

    // Called before every member call with its log line; a test may do there what a person would
    // do meanwhile.
    std::function<void(const std::string&)> before_call;
    // Called after every call that changed a document.
    std::function<void()> changed;

    // The decimal separator of texts that come as numbers: the COM side sets it from the call's
    // locale.
    char decimal_separator = '.';
    Manner manner;
    // Detail sheets answer IsDetail with the number 1 instead of the Boolean true.
    bool detail_as_number = false;
    // While a dialog is open, the session rejects every call.
    bool dialog_open = false;
    // What computing a table's display takes: after each of its changes, or once when its
    // computing is switched on.
    std::chrono::microseconds recompute_time{0};
    // Lets that much time pass in a call.
    std::function<void(std::chrono::microseconds)> pass_time;

    // For the session's own objects and for what serves them over COM. BeginCall logs a call of the
    // member and raises the armed failure when it is due.
    void BeginCall(const std::string& line, std::string_view member_name);
    [[nodiscard]] char DecimalSeparator() const {
        return manner.converts_in_users_language ? ',' : decimal_separator;
    }
    // A length as it is answered.
    [[nodiscard]] double Answered(double millimetres) const;
    // A text as it is answered.
    [[nodiscard]] std::string Answered(const std::string& text) const;
    void NoteLookup(std::string_view class_name, std::string_view member_name);
    void NoteChange();
    void ComputeDisplay(const Table& table);

  private:
    [[nodiscard]] const Document* DrawingNamed(std::string_view document_name) const;

    struct Model;
    std::unique_ptr<Model> model_;
};

} // namespace simulator
