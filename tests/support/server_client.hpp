// The objects of the simulated session as the COM client hands them to the program: what that does
// with a call is done here to a session in the same process.
#pragma once

#include <memory>
#include <utility>

#include "automation/number_texts.hpp"
#include "automation/object.hpp"
#include "automation/run_time_error.hpp"

namespace testing_support {

class ServerClient : public automation::Object {
  public:
    explicit ServerClient(automation::ObjectPtr server) : server_(std::move(server)) {}

  private:
    using Value = automation::Value;

    Value Get(const automation::Member& member) override { return Call(member, {}); }
    Value Call(const automation::Member& member, const automation::Array& arguments) override {
        return Repeating(member, arguments, [&](const automation::Array& sent) {
            return FromServer(server_->call(member, sent));
        });
    }
    void Put(const automation::Member& member, const Value& value) override {
        Repeating(member, {value}, [&](const automation::Array& sent) {
            server_->put(member, sent.front());
            return Value();
        });
    }

    template <typename Send>
    static Value Repeating(const automation::Member& member, const automation::Array& arguments,
                           Send send) {
        try {
            return send(ToServer(arguments));
        } catch (const automation::RunTimeError& error) {
            const auto numbers = automation::TextsAsNumbers(member, arguments);
            if (error.number != automation::TypeMismatch().number || !numbers) {
                throw;
            }
            return send(ToServer(*numbers));
        }
    }

    static Value FromServer(const Value& answer) {
        const auto* object = std::get_if<automation::ObjectPtr>(&answer.storage());
        return object != nullptr && *object != nullptr
                   ? Value(std::make_shared<ServerClient>(*object))
                   : answer;
    }
    static automation::Array ToServer(const automation::Array& values) {
        automation::Array sent;
        for (const Value& value : values) {
            sent.push_back(ToServer(value));
        }
        return sent;
    }
    static Value ToServer(const Value& value) {
        const auto& storage = value.storage();
        if (const auto* object = std::get_if<automation::ObjectPtr>(&storage)) {
            const auto* ours = dynamic_cast<const ServerClient*>(object->get());
            return ours != nullptr ? Value(ours->server_) : value;
        }
        const auto* reference = std::get_if<automation::Reference>(&storage);
        if (reference != nullptr && (*reference)->Is<automation::Array>()) {
            return std::make_shared<Value>(
                ToServer(std::get<automation::Array>((*reference)->storage())));
        }
        return value;
    }

    automation::ObjectPtr server_;
};

} // namespace testing_support
