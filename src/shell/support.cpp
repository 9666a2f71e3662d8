#include "shell/support.hpp"

#include "shell/explanations.hpp"
#include "shell/shell.hpp"
#include "text/text.hpp"
#include "version.h"

namespace shell {

namespace {

constexpr const char* kProgram = "Dorvak " DORVAK_VERSION_TEXT;
constexpr int kTimedCalls = 10;

std::string Line(const std::string& name, const std::string& value) {
    return name + ": " + value + "\r\n";
}

// What `question` answers, or the error that it ends with. Where the person no longer waits for
// CATIA, that is one as well: what is known without it is wanted all the more.
template <typename Question>
std::string Answer(Question&& question) {
    try {
        return question();
    } catch (const automation::RunTimeError& error) {
        return ErrorForLog(error);
    }
}

const char* InWords(platform::Rights rights) {
    switch (rights) {
    case platform::Rights::kSame:
        return "stejná práva";
    case platform::Rights::kMore:
        return "vyšší práva";
    case platform::Rights::kLess:
        return "nižší práva";
    case platform::Rights::kUnknown:
        break;
    }
    return "práva se nedají zjistit";
}

std::string OrUnknown(const std::string& path) {
    return path.empty() ? "program se nedá zjistit" : path;
}

std::string Registered(Form1& form) {
    const platform::Registration registration = form.ports.programs.RegisteredUnder(kCatia);
    return registration.found ? "zapsaná, " + OrUnknown(registration.program) : "není zapsaná";
}

std::string Windows(Form1& form) {
    Hledani_Catie(form);
    std::string lines = Line("Okna CATIE", std::to_string(form.catia_windows.size()));
    for (const platform::WindowHandle window : form.catia_windows) {
        lines += "  " + OrUnknown(form.ports.programs.PathOf(window)) + ", " +
                 InWords(form.ports.programs.RightsOf(window)) + "\r\n";
    }
    return lines;
}

std::string VersionOf(const catia::Application& application) {
    const catia::SystemConfiguration configuration = application.SystemConfiguration();
    return "V" + std::to_string(configuration.Version()) + " R" +
           std::to_string(configuration.Release()) + " SP" +
           std::to_string(configuration.ServicePack());
}

// The ending of the active document's name, where it is one of a document, and nothing else of it.
std::string ActiveKind(const catia::Application& application) {
    const std::string name = application.ActiveDocument().Name();
    const std::string_view ending = std::string_view(name).substr(name.rfind('.') + 1);
    for (const char* kind : {"CATDrawing", "CATProduct", "CATPart", "CATProcess", "CATAnalysis",
                             "CATMaterial", "CATShape", "catalog", "cgr", "model"}) {
        if (ending.size() < name.size() && text::EqualsIgnoringCase(ending, kind)) {
            return kind;
        }
    }
    return "jiný druh";
}

std::string CallTimes(Form1& form, const catia::Application& application) {
    std::string times;
    for (int call = 0; call < kTimedCalls; ++call) {
        const double before = form.ports.clock.Seconds();
        static_cast<void>(application.Name());
        times += (times.empty() ? "" : "; ") +
                 text::FixedDecimal(1000 * (form.ports.clock.Seconds() - before), 2);
    }
    return times + " ms";
}

std::string Catia(Form1& form) {
    std::string lines = Windows(form) + Line("Třída CATIA.Application", Registered(form));
    std::optional<catia::Application> application;
    lines += Line("Objekt CATIE", Answer([&] {
                      application = CatiaApplication(form);
                      return std::string("dostupný");
                  }));
    if (application) {
        lines += Line("Jméno", Answer([&] { return application->Name(); }));
        lines += Line("Verze", Answer([&] { return VersionOf(*application); }));
        lines += Line("Aktivní dokument", Answer([&] { return ActiveKind(*application); }));
        lines += Line("Deset volání", Answer([&] { return CallTimes(form, *application); }));
    }
    return lines;
}

} // namespace

std::string DiagnosisText(Form1& form) {
    std::string text = Line(kProgram, "diagnostika " + form.ports.clock.Now());
    text += Line("Složka dat", form.ports.files.DataFolder());
    for (const platform::Fact& fact : form.ports.computer.Facts()) {
        text += Line(fact.name, fact.value);
    }
    text += Catia(form);
    if (form.last_error) {
        text += Line("Poslední chyba", form.last_error->time + " " + form.last_error->step + ": " +
                                           ErrorForLog(form.last_error->error));
    }
    return text;
}

void m_Kopirovat_chybu_Click(Form1& form) {
    if (form.last_error) {
        const controls::LastError& last = *form.last_error;
        const std::string report =
            std::string(kProgram) + "\r\n" + ErrorReport(last.error, last.step, last.time);
        if (form.copy_text(report)) {
            stat(form, "Chyba zkopirovana");
        } else {
            Refuse(form, "Schranka je obsazena");
        }
    }
}

void m_Slozka_protokolu_Click(Form1& form) {
    TrapToStatus(form, [&] { form.ports.log.ShowFolder(); });
}

void m_Diagnostika_Click(Form1& form) {
    Trap(
        [&] {
            stat(form, "Diagnostika");
            const std::string folder = form.ports.log.Folder();
            const std::string path = folder + "\\diagnostika.txt";
            const std::string text = DiagnosisText(form);
            form.ports.files.MakeFolder(folder);
            form.ports.files.Write(path, text);
            stat(form, "Diagnostika ulozena " + path);
        },
        [&](const automation::RunTimeError& error) {
            ShowError(form, error, "Diagnostika Error ");
        });
}

void m_O_programu_Click(Form1& form) {
    form.ports.message_boxes.ShowInformation(
        "Dorvak pro Catii " DORVAK_VERSION_TEXT
        "\n\nKusovník, tabulky a listy výkresů v CATII V5.\n\nData: " +
            form.ports.files.DataFolder() + "\nProtokol: " + form.ports.log.Folder(),
        "O programu");
}

} // namespace shell
