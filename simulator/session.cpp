#include "session.hpp"

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "automation/run_time_error.hpp"
#include "document_file.hpp"
#include "objects.hpp"
#include "text/text.hpp"

namespace simulator {

struct Session::Model {
    LinkPtr link;
    std::vector<DocumentPtr> documents;
    DocumentPtr active;
    std::vector<std::string> log;
    Fault fault;
    int busy_calls_left = 0;
};

namespace {

auto FindNamed(const std::vector<DocumentPtr>& documents, std::string_view name) {
    return std::find_if(documents.begin(), documents.end(),
                        [&](const DocumentPtr& document) { return document->name == name; });
}

std::shared_ptr<Sheet> FindSheet(const DocumentPtr& document, std::string_view name) {
    return document != nullptr ? SheetNamed(*document, name) : nullptr;
}

// Short times are spent exactly, as a system's sleep would not.
void PassTime(std::chrono::microseconds time) {
    constexpr std::chrono::milliseconds kLong{50};
    if (time >= kLong) {
        std::this_thread::sleep_for(time);
        return;
    }
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
    }
}

} // namespace

Session::Session() : pass_time(PassTime), model_(std::make_unique<Model>()) {
    Arm({});
}

Session::~Session() {
    model_->link->session = nullptr;
}

void Session::LoadDocument(std::string_view file_name, std::string_view content) {
    DocumentPtr document = ReadDocument(file_name, content);
    const auto same_name = FindNamed(model_->documents, document->name);
    if (same_name != model_->documents.end()) {
        (*same_name)->open = false;
        model_->documents.erase(same_name);
    }
    model_->documents.push_back(document);
    model_->active = std::move(document);
    NoteChange();
}

void Session::CloseAllDocuments() {
    for (const DocumentPtr& document : model_->documents) {
        document->open = false;
    }
    model_->documents.clear();
    model_->active = nullptr;
    NoteChange();
}

void Session::CloseActiveDocument() {
    const auto closed = FindNamed(model_->documents, ActiveDocumentName());
    if (closed == model_->documents.end()) {
        return;
    }
    (*closed)->open = false;
    model_->documents.erase(closed);
    model_->active = model_->documents.empty() ? nullptr : model_->documents.back();
    NoteChange();
}

std::vector<std::string> Session::DocumentNames() const {
    std::vector<std::string> names;
    for (const DocumentPtr& document : model_->documents) {
        names.push_back(document->name);
    }
    return names;
}

std::string Session::ActiveDocumentName() const {
    return model_->active != nullptr ? model_->active->name : std::string();
}

std::string Session::WindowTitle() const {
    const std::string name = ActiveDocumentName();
    return (name.empty() ? "CATIA V5" : "CATIA V5 - [" + name + "]") + " - simulace";
}

void Session::Activate(std::string_view document_name) {
    const auto found = FindNamed(model_->documents, document_name);
    if (found == model_->documents.end()) {
        throw std::runtime_error("no open document is named " + std::string(document_name));
    }
    model_->active = *found;
    NoteChange();
}

automation::ObjectPtr Session::Application() {
    if (model_->link->session == nullptr) {
        throw automation::CannotCreateObject();
    }
    return MakeApplication(model_->link);
}

const std::vector<std::string>& Session::Log() const {
    return model_->log;
}

void Session::ClearLog() {
    model_->log.clear();
}

void Session::Arm(const Fault& fault) {
    model_->fault = fault;
    model_->busy_calls_left = 0;
    if (model_->link == nullptr || model_->link->session == nullptr) {
        model_->link = std::make_shared<Link>(Link{this});
    }
}

const Document* Session::DrawingNamed(std::string_view document_name) const {
    const Document* document = model_->active.get();
    if (!document_name.empty()) {
        const auto found = FindNamed(model_->documents, document_name);
        document = found != model_->documents.end() ? found->get() : nullptr;
    }
    return document != nullptr && document->kind == DocumentKind::kDrawing ? document : nullptr;
}

std::string Session::DrawingAsText(std::string_view document_name) const {
    const Document* const drawing = DrawingNamed(document_name);
    return drawing != nullptr ? WriteDrawing(*drawing) : std::string();
}

std::string Session::DisplayAsText(std::string_view document_name) const {
    const Document* const drawing = DrawingNamed(document_name);
    return drawing != nullptr ? WriteDisplay(*drawing) : std::string();
}

bool Session::ActivateSheet(std::string_view sheet_name) {
    const auto sheet = FindSheet(model_->active, sheet_name);
    if (sheet == nullptr) {
        return false;
    }
    model_->active->active_sheet = sheet;
    NoteChange();
    return true;
}

bool Session::ActivateView(std::string_view sheet_name, std::string_view view_name) {
    const auto sheet = FindSheet(model_->active, sheet_name);
    const auto view = sheet != nullptr ? ViewNamed(*sheet, view_name) : nullptr;
    if (view == nullptr) {
        return false;
    }
    sheet->active_view = view;
    NoteChange();
    return true;
}

bool Session::SelectTable(std::string_view sheet_name, std::string_view view_name,
                          std::size_t table, Selecting selecting) {
    const auto sheet = FindSheet(model_->active, sheet_name);
    const auto view = sheet != nullptr ? ViewNamed(*sheet, view_name) : nullptr;
    if (view == nullptr || table < 1 || table > view->tables.size()) {
        return false;
    }
    auto& selection = model_->active->selection;
    selection.clear();
    if (selecting != Selecting::kAlone) {
        selection.push_back(view);
        selection.insert(selection.end(), view->texts.begin(), view->texts.end());
    }
    selection.insert(selecting == Selecting::kAfterItsView ? selection.end() : selection.begin(),
                     view->tables[table - 1]);
    NoteChange();
    return true;
}

void Session::ClearSelection() {
    if (model_->active != nullptr) {
        model_->active->selection.clear();
        NoteChange();
    }
}

void Session::DeleteTables() {
    if (model_->active == nullptr) {
        return;
    }
    for (const auto& sheet : model_->active->sheets) {
        for (const auto& view : sheet->views) {
            for (const auto& table : view->tables) {
                table->deleted = true;
                std::erase(model_->active->selection, table);
            }
            view->tables.clear();
        }
    }
    NoteChange();
}

void Session::AddToNames(std::string_view text) {
    if (model_->active == nullptr) {
        return;
    }
    Document& document = *model_->active;
    document.name.insert(std::min(document.name.rfind('.'), document.name.size()), text);
    for (const auto& sheet : document.sheets) {
        sheet->name += text;
    }
    for (const auto& product : ProductsOf(document)) {
        product->part_number += text;
        for (Product::Instance& instance : product->instances) {
            instance.name += text;
        }
    }
    NoteChange();
}

const DocumentPtr& Session::ActiveDocument() const {
    return model_->active;
}

void Session::BeginCall(const std::string& line, std::string_view member_name) {
    model_->log.push_back(line);
    if (before_call) {
        before_call(line);
    }
    if (dialog_open) {
        throw CallRejected();
    }
    if (model_->busy_calls_left > 0) {
        --model_->busy_calls_left;
        throw CallRejected();
    }
    if (model_->fault.call == 0 || --model_->fault.call != 0) {
        return;
    }
    switch (model_->fault.kind) {
    case FaultKind::kRefused:
        throw MethodFailed(member_name);
    case FaultKind::kBusy:
        if (model_->fault.times < 1) {
            return;
        }
        model_->busy_calls_left = model_->fault.times - 1;
        throw CallRejected();
    case FaultKind::kVanished:
        model_->link->session = nullptr;
        throw ServerUnavailable();
    case FaultKind::kSlow:
        pass_time(model_->fault.milliseconds);
        return;
    case FaultKind::kClosed:
        CloseActiveDocument();
        return;
    case FaultKind::kDeleted:
        DeleteTables();
        return;
    }
}

double Session::Answered(double millimetres) const {
    constexpr double kInch = 25.4;
    return manner.lengths_through_inches ? millimetres / kInch * kInch : millimetres;
}

std::string Session::Answered(const std::string& text) const {
    if (!manner.line_breaks_are_pairs) {
        return text;
    }
    constexpr std::string_view kPair = "\r\n";
    std::string answered;
    const std::string single = text::WithLineFeeds(text);
    for (const std::string_view line : text::Split(single, "\n")) {
        answered.append(line).append(kPair);
    }
    answered.resize(answered.size() - kPair.size());
    return answered;
}

void Session::NoteLookup(std::string_view class_name, std::string_view member_name) {
    model_->log.push_back(
        std::string("lookup ").append(class_name).append(".").append(member_name));
}

void Session::ComputeDisplay(const Table& table) {
    if (ComputesDisplay(table) && recompute_time.count() > 0) {
        pass_time(recompute_time);
    }
}

void Session::NoteChange() {
    if (changed) {
        changed();
    }
}

} // namespace simulator
