#include "shell/explanations.hpp"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string_view>

#include "shell/shell.hpp"
#include "text/text.hpp"

namespace shell {

namespace {

// What the numbers of failed calls say, as signed numbers.
constexpr long kFailed = static_cast<std::int32_t>(0x80004005);
constexpr long kTypeMismatch = static_cast<std::int32_t>(0x80020005);
constexpr long kCallRejected = static_cast<std::int32_t>(0x80010001);
constexpr long kRetryLater = static_cast<std::int32_t>(0x8001010A);
constexpr long kServerFault = static_cast<std::int32_t>(0x80010105);
constexpr long kCallFailed = static_cast<std::int32_t>(0x800706BE);
constexpr long kServerUnavailable = static_cast<std::int32_t>(0x800706BA);
constexpr long kDisconnected = static_cast<std::int32_t>(0x80010108);

constexpr const char* kNotConnected =
    "Okno CATIE je vidět, ale program se s ní nespojil. Spusťte CATII pod stejným uživatelem jako "
    "tento program, ne jako správce.";

// The word that goes with a number of things: with 1, with 2 to 4, with any other.
std::string WordFor(long long count, const char* one, const char* few, const char* many) {
    return count == 1 ? one : count >= 2 && count <= 4 ? few : many;
}

// "1 list", "2 listy", "5 listů".
std::string Counted(long long count, const char* one, const char* few, const char* many) {
    return std::to_string(count) + " " + WordFor(count, one, few, many);
}

// The end of a sentence; the texts of the system and of CATIA have a point at theirs or have none.
std::string Ended(const std::string& description) {
    return description.ends_with('.') ? description : description + ".";
}

bool HasFileName(const std::string& path, std::string_view name) {
    return text::EqualsIgnoringCase(std::string_view(path).substr(path.rfind('\\') + 1), name);
}

// What the person does so that CATIA can be reached: its own program enters it in the registry.
std::string RegisterCatia(const std::string& program) {
    const std::string command = HasFileName(program, "CNEXT.exe")
                                    ? "„\"" + program + "\" /regserver“"
                                    : "„CNEXT.exe /regserver“ ve složce code\\bin CATIE";
    return " Ukončete CATII, spusťte jako správce příkaz " + command + " a spusťte CATII znovu.";
}

// The sign that stands for words left out.
constexpr std::string_view kLeftOut = "…";

// Whether a letter or a digit; of other languages than English any byte of theirs.
bool IsOfAWord(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

// A part of a few letters counts as a whole word only: "e" is in most sentences.
void LeaveOut(std::string& text, const std::string& part) {
    constexpr std::size_t kFew = 3;
    std::size_t at = 0;
    while ((at = text.find(part, at)) != std::string::npos) {
        const std::size_t end = at + part.size();
        const bool within =
            (at > 0 && IsOfAWord(text[at - 1])) || (end < text.size() && IsOfAWord(text[end]));
        if (part.size() <= kFew && within) {
            ++at;
        } else {
            text.replace(at, part.size(), kLeftOut);
            at += kLeftOut.size();
        }
    }
}

// On one line, as the log needs it.
std::string OneLine(std::string_view text) {
    std::string line = text::WithLineFeeds(text);
    std::ranges::replace(line, '\n', ' ');
    return line;
}

struct Quotes {
    std::string_view opening;
    std::string_view closing;
};

// Leaves out what stands between the quotes, which stay.
void LeaveOutQuoted(std::string& text, const Quotes& quotes) {
    std::size_t from = 0;
    while ((from = text.find(quotes.opening, from)) != std::string::npos) {
        from += quotes.opening.size();
        const std::size_t to = text.find(quotes.closing, from);
        if (to == std::string::npos) {
            return;
        }
        text.replace(from, to - from, kLeftOut);
        from += kLeftOut.size() + quotes.closing.size();
    }
}

// A word with a folder or with the ending of a document.
bool IsFile(std::string_view word) {
    return word.find('\\') != std::string_view::npos || text::ContainsIgnoringCase(word, ".CAT");
}

std::string WithoutFiles(const std::string& text) {
    std::string rest;
    for (const std::string_view word : text::Split(text, " ")) {
        rest += rest.empty() ? "" : " ";
        rest += IsFile(word) ? kLeftOut : word;
    }
    return rest;
}

// A text of a server may repeat names of documents and parts: what the call was given, and whatever
// looks like a name.
std::string WithoutPersonsWords(const std::string& words, std::vector<std::string> given) {
    std::string text = OneLine(words);
    std::ranges::sort(given, std::ranges::greater(),
                      [](const std::string& part) { return part.size(); });
    for (const std::string& part : given) {
        if (!part.empty()) {
            LeaveOut(text, OneLine(part));
        }
    }
    for (const Quotes& quotes : {Quotes{"\"", "\""}, Quotes{"„", "“"}, Quotes{"“", "”"},
                                 Quotes{"«", "»"}, Quotes{" '", "'"}, Quotes{"‘", "’"}}) {
        LeaveOutQuoted(text, quotes);
    }
    return WithoutFiles(text);
}

std::string AtMember(const automation::RunTimeError& error) {
    return error.member.empty() ? "" : " při volání " + error.member;
}

} // namespace

std::string Explained(const automation::RunTimeError& error) {
    if (!error.reason.empty()) {
        return error.reason;
    }
    const std::string at = AtMember(error);
    switch (error.number) {
    case kCallRejected:
    case kRetryLater:
        return "CATIA je zaneprázdněná" + at +
               ". Dokončete v ní rozpracovaný příkaz, zavřete otevřená okna a zkuste to znovu.";
    case kServerFault:
    case kCallFailed:
    case kServerUnavailable:
        return "Spojení s CATIÍ se přerušilo" + at +
               ". Zkontrolujte, zda CATIA běží, a zkuste to znovu.";
    case kDisconnected:
        return "S čím program pracoval, to už v CATII není" + at +
               ": dokument je zavřený, tabulka smazaná, nebo CATIA skončila. Zkuste to znovu.";
    case 13:
    case kTypeMismatch:
        return "Hodnota není číslo, jaké CATIA čeká" + at +
               ". Zkontrolujte čísla v nastavení tabulky, desetinný oddělovač je tečka.";
    case 424:
        return "CATIA nevrátila žádný objekt" + at +
               ". Zkontrolujte, zda je výkres otevřený a pohled aktivní.";
    case 429:
        return kNotConnected;
    case 438:
        return "Objekt CATIE neumí, co je potřeba" + at +
               ". Zkontrolujte, zda je aktivní správný dokument.";
    case kFailed:
        return "CATIA odmítla provést krok" + at + ": " + Ended(error.description) +
               " Zkontrolujte aktivní výkres, pohled a výběr a zkuste to znovu.";
    case 6:
        if (!error.member.empty()) {
            return "Číslo je příliš velké" + at + ". Zkontrolujte čísla v nastavení tabulky.";
        }
        [[fallthrough]];
    default:
        return "Chyba " + std::to_string(error.number) + at + ": " + Ended(error.description);
    }
}

std::string Interrupted(const std::string& last_message,
                        const std::optional<controls::Progress>& progress) {
    std::string sentence = "Přerušeno";
    if (progress) {
        sentence +=
            ", hotovo " + std::to_string(progress->done) + " z " + std::to_string(progress->total);
    }
    const std::string_view message = text::TrimBlanks(last_message);
    if (!message.empty()) {
        sentence += ". Poslední krok: „" + std::string(message) + "“";
    }
    return sentence + ".";
}

std::string CatiaIsBusy() {
    return "CATIA je zaneprázdněná. Klávesa Esc příkaz přeruší.";
}

std::string CatiaRejectsCalls() {
    return "CATIA teď nepřijímá příkazy, nejspíš čeká na odpověď v otevřeném okně. Klávesa Esc "
           "příkaz přeruší.";
}

std::string CatiaUnreachable(const UnreachableCatia& state) {
    if (state.rights == platform::Rights::kMore) {
        return "CATIA běží jako správce a tento program ne, proto se nespojí. Ukončete CATII a "
               "spusťte ji bez volby „Spustit jako správce“.";
    }
    if (state.rights == platform::Rights::kLess) {
        return "Tento program běží jako správce a CATIA ne, proto se nespojí. Ukončete ho a "
               "spusťte bez volby „Spustit jako správce“.";
    }
    const std::string& registered = state.registration.program;
    if (!state.registration.found || registered.empty()) {
        return "CATIA není na tomto počítači zapsaná pro ovládání jinými programy." +
               RegisterCatia(state.program);
    }
    if (!state.program.empty() && !text::EqualsIgnoringCase(state.program, registered)) {
        return "Pro ovládání jinými programy je místo běžící CATIE zapsaný program „" + registered +
               "“." + RegisterCatia(state.program);
    }
    return state.rights == platform::Rights::kSame
               ? "Okno CATIE je vidět, ale CATIA ještě nepřijímá příkazy. Počkejte, až se celá "
                 "spustí; nepomůže-li to, ukončete ji a spusťte znovu."
               : kNotConnected;
}

std::string WorkedOn(const std::string& document, std::size_t windows) {
    return "Poslední příkaz pracoval s dokumentem „" + document +
           "“. Otevřená okna CATIE: " + std::to_string(windows) + ".";
}

std::string TooManyValues(std::size_t line, std::size_t values, std::size_t most) {
    return "Řádek " + std::to_string(line) + ": " +
           Counted(static_cast<long long>(values), "hodnota", "hodnoty", "hodnot") +
           ", nejvýš je " + std::to_string(most) + ".";
}

std::string PositionWithoutY(std::size_t line) {
    return "Řádek " + std::to_string(line) + ": za /pozice chybí hodnota Y.";
}

std::string NoColumnOfTheList(const std::string& slot) {
    return "„" + slot + "“ v řádku /razeni není číslo sloupce seznamu, platí 0 až 6.";
}

std::string NoCurrentRow() {
    return "V seznamu není vybraný řádek. Klikněte na řádek, který se má zapsat.";
}

std::string TableInWork() {
    return "Do tabulky právě zapisuje jiný příkaz. Načtěte ji, až skončí.";
}

std::string TableChangedMeanwhile() {
    return "Během načítání zapsal do tabulky jiný příkaz. Načtěte ji znovu.";
}

std::string TableFilledMeanwhile() {
    return "Během vytváření zapsal do tabulky jiný příkaz. Smažte novou tabulku v Catii a vytvořte "
           "ji znovu.";
}

std::string TableToUpdateInWork() {
    return "S tabulkou právě pracuje jiný příkaz. Aktualizujte ji, až skončí.";
}

std::string TableChangedWhileUpdated() {
    return "Během aktualizace zapsal do tabulky jiný příkaz. Aktualizujte ji znovu.";
}

std::string TableNotRedrawn() {
    return "Tabulka je zapsaná, ale CATIA ji nepřekreslila. Zapište ji znovu.";
}

std::string TextsPlaced(std::size_t texts) {
    const auto count = static_cast<long long>(texts);
    return "Hotovo: do výkresu " + WordFor(count, "je vložen", "jsou vloženy", "je vloženo") + " " +
           Counted(count, "text", "texty", "textů") + ".";
}

std::string SheetsNumbered(int sheets) {
    return "Hotovo: " + WordFor(sheets, "očíslován", "očíslovány", "očíslováno") + " " +
           Counted(sheets, "list", "listy", "listů") + ".";
}

std::string SheetsNamed(int sheets) {
    return "Hotovo: " + WordFor(sheets, "pojmenován", "pojmenovány", "pojmenováno") + " " +
           Counted(sheets, "list", "listy", "listů") + ".";
}

std::string SheetCreated() {
    return "Hotovo: vytvořen 1 list.";
}

std::string SheetsSwapped() {
    return "Hotovo: prohozeny 2 listy.";
}

std::string ErrorForLog(const automation::RunTimeError& error) {
    std::string text = "chyba " + std::to_string(error.number) + AtMember(error) + ": " +
                       Ended(WithoutPersonsWords(error.description, error.given));
    if (!error.reason.empty()) {
        text += " " + WithoutPersonsWords(error.reason, {});
    }
    return text;
}

std::string ErrorReport(const automation::RunTimeError& error, const std::string& step,
                        const std::string& time) {
    std::string report =
        "Chyba: " + std::to_string(error.number) + "\r\nPopis: " + error.description + "\r\n";
    if (!error.member.empty()) {
        report += "Volání: " + error.member + "\r\n";
    }
    return report + "Příkaz: " + step + "\r\nČas: " + time + "\r\n";
}

std::string NotSevenColumns(int columns) {
    return "Vybraná tabulka má " + Counted(columns, "sloupec", "sloupce", "sloupců") +
           ", načíst jde jen tabulka se 7 sloupci. Seznam je proto prázdný.";
}

std::string RowsMarked(const MarkedRows& rows) {
    const auto missing = static_cast<long long>(rows.missing);
    const auto ambiguous = static_cast<long long>(rows.ambiguous);
    std::string sentences;
    if (missing > 0 && rows.knows_before) {
        sentences = Counted(missing, "vybraný řádek už nemá", "vybrané řádky už nemají",
                            "vybraných řádků už nemá") +
                    " svůj díl ve stromu; " + WordFor(missing, "smaže ho", "smaže je", "smaže je") +
                    " Ctrl+Delete.";
    } else if (missing > 0) {
        sentences = Counted(missing, "označený řádek nemá", "označené řádky nemají",
                            "označených řádků nemá") +
                    " svůj díl ve stromu. Zda tam dřív byl, není známo, proto není nic vybráno.";
    }
    if (ambiguous > 0) {
        sentences += sentences.empty() ? "" : " ";
        sentences +=
            Counted(ambiguous, "označený řádek má", "označené řádky mají", "označených řádků má") +
            " jméno, které je v seznamu víckrát; kusy v nich zůstaly.";
    }
    return sentences;
}

std::string PartsNotRemembered(const automation::RunTimeError& error) {
    return "Materiály, velikosti a poznámky se nepodařilo zapamatovat pro „Doplnit známé“. " +
           FileTrouble(error);
}

std::string FileTrouble(const automation::RunTimeError& error) {
    switch (error.number) {
    case 52:
        return "Takový název soubor mít nemůže.";
    case 53:
        return "Soubor neexistuje.";
    case 61:
        return "Disk je plný. Uvolněte na něm místo.";
    case 70:
        return "Soubor má otevřený jiný program, nebo je určený jen pro čtení.";
    case 71:
        return "Disk není připravený.";
    case 75:
        return "Do složky se nedá zapisovat, nebo na místě souboru stojí složka.";
    case 76:
        return "Složka neexistuje. Zkontrolujte, zda je disk připojený.";
    default:
        return "Chyba " + Ended(ErrorText(error));
    }
}

std::string NewerListLoaded(const std::string& loaded, const std::string& kept) {
    return "Seznam je načtený ze souboru " + loaded + ", který je novější než " + kept + ".";
}

std::string RestoreQuestion(const std::string& time, std::size_t rows) {
    return "Program minule neskončil řádně. Obnovit seznam z " + time + " (" +
           Counted(static_cast<long long>(rows), "řádek", "řádky", "řádků") + ")?";
}

std::string LinesSkipped(std::size_t lines, std::size_t first) {
    return "Ve stromu chybí " + Counted(static_cast<long long>(lines), "řádek", "řádky", "řádků") +
           " struktury, první je řádek " + std::to_string(first) +
           ": neznámý nadřízený, opakovaná cesta nebo chybějící pole.";
}

std::string GuideIsMissing() {
    return "Vedle programu chybí složka prirucka s příručkou. Nainstalujte Dorvak znovu, nebo "
           "rozbalte "
           "celý soubor ZIP.";
}

} // namespace shell
