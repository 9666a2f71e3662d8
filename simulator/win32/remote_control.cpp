#include "remote_control.hpp"

#include <array>
#include <charconv>
#include <map>
#include <stdexcept>
#include <system_error>

#include "files.hpp"
#include "text/text.hpp"

namespace simulator {

namespace {

// The words of a command, taken one after the other.
class Command {
  public:
    explicit Command(std::string_view text) : rest_(text::TrimBlanks(text)) {}

    std::string Word() {
        std::string_view word;
        if (rest_.starts_with('"')) {
            const std::size_t end = rest_.find('"', 1);
            if (end == std::string_view::npos) {
                throw std::runtime_error("a quoted name has no end");
            }
            word = rest_.substr(1, end - 1);
            rest_.remove_prefix(end + 1);
        } else {
            word = rest_.substr(0, rest_.find(' '));
            rest_.remove_prefix(word.size());
        }
        rest_ = text::TrimBlanks(rest_);
        return std::string(word);
    }

    int Number(int least = 1) {
        const std::string word = Word();
        int number = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        if (error != std::errc() || end != word.data() + word.size() || number < least) {
            throw std::runtime_error("\"" + word + "\" is no number from " + std::to_string(least));
        }
        return number;
    }

    std::string Rest() {
        std::string rest(rest_);
        rest_ = {};
        return rest;
    }

    void ExpectEnd() const {
        if (!rest_.empty()) {
            throw std::runtime_error("\"" + std::string(rest_) + "\" is not expected");
        }
    }

  private:
    std::string_view rest_;
};

void Arm(Session& session, Command& command) {
    Fault fault;
    fault.call = static_cast<std::size_t>(command.Number());
    const std::string kind = command.Word();
    if (kind == "refused") {
        fault.kind = FaultKind::kRefused;
    } else if (kind == "busy") {
        fault.kind = FaultKind::kBusy;
        fault.times = command.Number();
    } else if (kind == "vanish") {
        fault.kind = FaultKind::kVanished;
    } else if (kind == "slow") {
        fault.kind = FaultKind::kSlow;
        fault.milliseconds = std::chrono::milliseconds(command.Number());
    } else if (kind == "close") {
        fault.kind = FaultKind::kClosed;
    } else if (kind == "delete") {
        fault.kind = FaultKind::kDeleted;
    } else {
        throw std::runtime_error("unknown fault \"" + kind + "\"");
    }
    session.Arm(fault);
}

void Check(bool done) {
    if (!done) {
        throw std::runtime_error("there is no such sheet, view or table");
    }
}

void Select(Session& session, Command& command) {
    const std::string sheet = command.Word();
    const std::string view = command.Word();
    const auto table = static_cast<std::size_t>(command.Number());
    const std::string among = command.Word();
    if (!among.empty() && among != "first" && among != "last") {
        throw std::runtime_error("\"" + among + "\" is neither first nor last");
    }
    Check(session.SelectTable(sheet, view, table,
                              among.empty()      ? Session::Selecting::kAlone
                              : among == "first" ? Session::Selecting::kBeforeItsView
                                                 : Session::Selecting::kAfterItsView));
}

// Whether `command` is one of the two words of a switch of the session's manner; sets it then.
bool SetManner(Manner& manner, std::string_view command) {
    struct Switch {
        std::string_view off, on;
        bool Manner::*is_on;
    };
    static constexpr auto kSwitches = std::to_array<Switch>(
        {{"convert call", "convert user", &Manner::converts_in_users_language},
         {"lengths plain", "lengths inches", &Manner::lengths_through_inches},
         {"zero refused", "zero automatic", &Manner::zero_is_automatic},
         {"sheets last", "sheets before", &Manner::new_sheets_before_details},
         {"empty taken", "empty refused", &Manner::refuses_empty_texts},
         {"breaks lf", "breaks crlf", &Manner::line_breaks_are_pairs},
         {"changes taken", "changes refused", &Manner::read_only}});
    for (const Switch& each : kSwitches) {
        if (command == each.off || command == each.on) {
            manner.*each.is_on = command == each.on;
            return true;
        }
    }
    return false;
}

} // namespace

std::string LogAsText(const Session& session) {
    std::string text;
    for (const std::string& line : session.Log()) {
        text += line + "\n";
    }
    return text;
}

void DoRemoteCommand(Session& session, std::string_view command_line,
                     const WindowCommands& window) {
    Command command(command_line);
    const std::string first = command.Word();
    if (first == "fail") {
        Arm(session, command);
    } else if (first == "disarm") {
        session.Arm({});
    } else if (first == "activate") {
        session.Activate(command.Rest());
    } else if (first == "open") {
        const std::string path = command.Rest();
        session.LoadDocument(path, ReadWholeFile(path));
    } else if (first == "title") {
        window.set_title(command.Rest());
    } else if (first == "recompute") {
        session.recompute_time = std::chrono::microseconds(command.Number(0));
    } else if (first == "sheet") {
        Check(session.ActivateSheet(command.Word()));
    } else if (first == "view") {
        const std::string sheet = command.Word();
        Check(session.ActivateView(sheet, command.Word()));
    } else if (first == "select") {
        Select(session, command);
    } else if (first == "names") {
        session.AddToNames(command.Rest());
    } else if (first == "without") {
        session.manner.missing_members.insert(command.Rest());
    } else if (first == "with") {
        session.manner.missing_members.erase(command.Rest());
    } else {
        const std::string both = first + " " + command.Word();
        if (both == "log clear") {
            session.ClearLog();
        } else if (both == "log write") {
            WriteWholeFile(command.Rest(), LogAsText(session));
        } else if (both == "drawing write") {
            WriteWholeFile(command.Rest(), session.DrawingAsText());
        } else if (both == "display write") {
            WriteWholeFile(command.Rest(), session.DisplayAsText());
        } else if (both == "dialog open" || both == "dialog close") {
            window.show_dialog(both == "dialog open");
        } else if (both == "close all") {
            session.CloseAllDocuments();
        } else if (both == "close active") {
            session.CloseActiveDocument();
        } else if (both == "delete tables") {
            session.DeleteTables();
        } else if (both == "detail number" || both == "detail boolean") {
            session.detail_as_number = both == "detail number";
        } else if (!SetManner(session.manner, both)) {
            throw std::runtime_error("unknown command \"" + both + "\"");
        }
    }
    command.ExpectEnd();
}

} // namespace simulator
