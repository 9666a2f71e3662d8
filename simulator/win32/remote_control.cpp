#include "remote_control.hpp"

#include <charconv>
#include <map>
#include <stdexcept>

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
    } else if (first == "select") {
        const std::string sheet = command.Word();
        const std::string view = command.Word();
        Check(session.SelectTable(sheet, view, static_cast<std::size_t>(command.Number())));
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
        } else if (both == "detail number" || both == "detail boolean") {
            session.detail_as_number = both == "detail number";
        } else {
            throw std::runtime_error("unknown command \"" + both + "\"");
        }
    }
    command.ExpectEnd();
}

} // namespace simulator
