#include "automation/object.hpp"

#include <deque>
#include <span>
#include <string>
#include <vector>

#include "automation/run_time_error.hpp"

namespace automation {

namespace {

std::vector<const CallGate*>& Gates() {
    static std::vector<const CallGate*> gates; // in the order that they were made
    return gates;
}

std::vector<std::string> Texts(std::span<const Value> values) {
    std::vector<std::string> texts;
    for (const Value& value : values) {
        if (value.Is<std::string>()) {
            texts.push_back(value.AsText());
        }
    }
    return texts;
}

// The texts that were answered lately: names, as a rule, which an error may speak of.
std::deque<std::string>& LastAnswers() {
    static std::deque<std::string> answers;
    return answers;
}

Value Noted(Value answer) {
    constexpr std::size_t kMost = 100;
    std::deque<std::string>& answers = LastAnswers();
    if (answer.Is<std::string>()) {
        answers.push_back(answer.AsText());
    }
    if (answers.size() > kMost) {
        answers.pop_front();
    }
    return answer;
}

// Makes a call once the gate lets it through. Errors of both name the member.
template <typename Body>
auto Pass(const std::function<void()>* before_call, const Member& member,
          std::span<const Value> given, Body&& body) {
    try {
        if (before_call != nullptr) {
            (*before_call)();
        }
        return body();
    } catch (RunTimeError& error) {
        if (error.member.empty()) {
            error.member = std::string(member.object_class) + "." + std::string(member.name);
            error.given = Texts(given);
            error.given.insert(error.given.end(), LastAnswers().begin(), LastAnswers().end());
        }
        throw;
    }
}

} // namespace

Value Object::get(const Member& member) {
    return Pass(BeforeCall(), member, {}, [&] { return Noted(Get(member)); });
}

void Object::put(const Member& member, const Value& value) {
    Pass(BeforeCall(), member, {&value, 1}, [&] { Put(member, value); });
}

Value Object::call(const Member& member, const Array& arguments) {
    return Pass(BeforeCall(), member, arguments, [&] { return Noted(Call(member, arguments)); });
}

const std::function<void()>* Object::BeforeCall() {
    return Gates().empty() ? nullptr : &Gates().back()->before_call_;
}

CallGate::CallGate(std::function<void()> before_call) : before_call_(std::move(before_call)) {
    Gates().push_back(this);
}

CallGate::~CallGate() {
    std::erase(Gates(), this);
}

} // namespace automation
