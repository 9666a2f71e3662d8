// What the COM client makes of a server's answers: a server of the test's own, in its process.
#include <array>
#include <deque>
#include <functional>
#include <stdexcept>

#include <ole2.h>

#include "automation/run_time_error.hpp"
#include "com/client.hpp"
#include "com/implementation.hpp"
#include "com/utf.hpp"
#include "com/variant.hpp"
#include "fixture.hpp"
#include "tests/support/error_of.hpp"

using automation::Array;
using automation::Value;
using Microsoft::WRL::ComPtr;

namespace {

automation::ObjectPtr NoObject(IDispatch* /*dispatch*/) {
    return nullptr;
}

// Keeps the arguments of every call, and answers the calls in turn with `answers`, then with
// success. With DISP_E_EXCEPTION it says what `exception` says.
class AnsweringServer : public com::Implementation<IDispatch> {
  public:
    std::vector<Array> calls;
    std::deque<HRESULT> answers;
    EXCEPINFO exception{};
    std::function<void()> during; // a call

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = nullptr;
        return DISP_E_BADINDEX;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
        ids[0] = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                     EXCEPINFO* info, UINT*) override {
        Array arguments;
        for (UINT i = parameters->cArgs; i > 0; --i) {
            arguments.push_back(com::FromVariant(parameters->rgvarg[i - 1], NoObject));
        }
        calls.push_back(std::move(arguments));
        if (const auto once = std::exchange(during, nullptr)) {
            once();
        }
        if (answers.empty()) {
            return S_OK;
        }
        if (answers.front() == DISP_E_EXCEPTION) {
            *info = exception;
        }
        const HRESULT answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

// The server runs under the name of a class that every system has.
class ComClient : public testing::Test {
  protected:
    ComClient() {
        OleInitialize(nullptr);
        constexpr const wchar_t* kProgramId = L"StdFont";
        CLSID class_id{};
        if (FAILED(CLSIDFromProgID(kProgramId, &class_id)) ||
            FAILED(RegisterActiveObject(server_.Get(), class_id, ACTIVEOBJECT_STRONG, &running_))) {
            throw std::runtime_error("the server cannot be registered");
        }
        object_ = com::GetActiveObject(com::Narrow(kProgramId));
    }
    ~ComClient() override {
        object_ = nullptr;
        RevokeActiveObject(running_, nullptr);
        OleUninitialize();
    }

    long ErrorOfCall(const Array& arguments, const char* member = "SetRowSize") {
        server_->calls.clear();
        return testing_support::ErrorOf([&] { object_->call({"Table", member}, arguments); });
    }

    ComPtr<AnsweringServer> server_ = com::Make<AnsweringServer>();
    automation::ObjectPtr object_;

  private:
    DWORD running_ = 0;
};

// A SAFEARRAY of elements of one size, zeroes.
_variant_t ArrayOf(VARTYPE type, ULONG element_size, ULONG count) {
    SAFEARRAY* array = nullptr;
    SafeArrayAllocDescriptor(1, &array);
    array->cbElements = element_size;
    array->rgsabound[0] = {count, 0};
    SafeArrayAllocData(array);
    _variant_t variant;
    V_VT(&variant) = static_cast<VARTYPE>(VT_ARRAY | type);
    V_ARRAY(&variant) = array;
    return variant;
}

} // namespace

TEST_F(ComClient, ATextThatIsANumberIsSentOnceMoreAsOneWhereItsTypeIsRefused) {
    server_->answers = {DISP_E_TYPEMISMATCH};
    object_->call({"Table", "SetRowSize"}, {1, "6.8"});
    object_->call({"Table", "SetRowSize"}, {2, "4.9"});
    EXPECT_EQ(server_->calls, (std::vector<Array>{{1, "6.8"}, {1, 6.8}, {2, "4.9"}}));
    server_->calls.clear();
    server_->answers = {DISP_E_TYPEMISMATCH};
    object_->put({"Table", "X"}, "12.5");
    EXPECT_EQ(server_->calls, (std::vector<Array>{{"12.5"}, {12.5}}));
}

TEST_F(ComClient, ATypeThatIsRefusedByAnExceptionIsRefusedTheSame) {
    constexpr auto kClassic = static_cast<SCODE>(0x800A000D);
    struct Case {
        SCODE scode;
        WORD code;
        long number;
    };
    for (const auto& [scode, code, number] : {Case{DISP_E_TYPEMISMATCH, 0, DISP_E_TYPEMISMATCH},
                                              Case{kClassic, 0, 13}, Case{E_FAIL, 13, 13}}) {
        server_->exception.scode = scode;
        server_->exception.wCode = code;
        server_->answers = {DISP_E_EXCEPTION};
        server_->calls.clear();
        object_->call({"Table", "SetRowSize"}, {1, "6.8"});
        EXPECT_EQ(server_->calls, (std::vector<Array>{{1, "6.8"}, {1, 6.8}}));
        server_->answers = {DISP_E_EXCEPTION};
        EXPECT_EQ(ErrorOfCall({1, "abc"}), number);
        EXPECT_EQ(server_->calls.size(), 1U);
        server_->answers = {DISP_E_EXCEPTION, DISP_E_EXCEPTION};
        EXPECT_EQ(ErrorOfCall({1, "6.8"}), number);
        EXPECT_EQ(server_->calls.size(), 2U);
    }
    server_->exception = {};
    server_->exception.scode = E_FAIL;
    server_->answers = {DISP_E_EXCEPTION};
    EXPECT_EQ(ErrorOfCall({1, "6.8"}), E_FAIL);
    EXPECT_EQ(server_->calls.size(), 1U);
}

TEST_F(ComClient, ACallInsideAnotherLeavesThatOneGoing) {
    bool before = false;
    bool after = false;
    server_->during = [&] {
        before = com::IsCalling();
        object_->call({"Table", "Inner"}, {});
        after = com::IsCalling();
    };
    object_->call({"Table", "Outer"}, {});
    EXPECT_TRUE(before);
    EXPECT_TRUE(after);
    EXPECT_FALSE(com::IsCalling());
}

TEST_F(ComClient, WhatIsNoNumberOrIsANameIsSentOnce) {
    for (const char* text : {"abc", "", "6,8", "6.8 mm"}) {
        server_->answers = {DISP_E_TYPEMISMATCH};
        EXPECT_EQ(ErrorOfCall({1, text}), 13) << text;
        EXPECT_EQ(server_->calls.size(), 1U) << text;
    }
    server_->answers = {DISP_E_TYPEMISMATCH};
    EXPECT_EQ(ErrorOfCall({"2"}, "Item"), 13);
    EXPECT_EQ(server_->calls.size(), 1U);
}

TEST_F(ComClient, ANumberThatIsRefusedTooIsSentNoMore) {
    server_->answers = {DISP_E_TYPEMISMATCH, DISP_E_TYPEMISMATCH};
    EXPECT_EQ(ErrorOfCall({1, "6.8"}), 13);
    EXPECT_EQ(server_->calls.size(), 2U);
    server_->answers = {DISP_E_TYPEMISMATCH, E_FAIL};
    EXPECT_EQ(ErrorOfCall({1, "6.8"}), E_FAIL) << "the answer to the number";
}

TEST_F(ComClient, OtherFailuresAreNotRepeatedAndHaveTheirNumbers) {
    for (const auto& [answer, number] : {std::pair<HRESULT, long>{DISP_E_OVERFLOW, 6},
                                         {DISP_E_BADINDEX, 9},
                                         {DISP_E_MEMBERNOTFOUND, 438},
                                         {DISP_E_BADPARAMCOUNT, 450},
                                         {E_FAIL, E_FAIL}}) {
        server_->answers = {answer};
        EXPECT_EQ(ErrorOfCall({1, "6.8"}), number);
        EXPECT_EQ(server_->calls.size(), 1U);
    }
}

TEST_F(ComClient, RecordsInAnArrayAreRefused) {
    constexpr ULONG kLargeRecord = 400;
    for (const auto& [type, size] : {std::pair<VARTYPE, ULONG>{VT_RECORD, kLargeRecord},
                                     {VT_RECORD, 8},
                                     {VT_I4, kLargeRecord},
                                     {VT_I8, 16},
                                     {VT_USERDEFINED, 8}}) {
        const _variant_t array = ArrayOf(type, size, 3);
        EXPECT_EQ(testing_support::ErrorOf([&] { com::FromVariant(array, NoObject); }), 13)
            << type << " of " << size;
    }
    EXPECT_EQ(com::FromVariant(ArrayOf(VT_R8, 8, 2), NoObject), Value(Array{0.0, 0.0}));
    EXPECT_EQ(com::FromVariant(ArrayOf(VT_DECIMAL, 16, 1), NoObject), Value(Array{0.0}));
    EXPECT_EQ(com::FromVariant(ArrayOf(VT_BOOL, 2, 1), NoObject), Value(Array{false}));
    EXPECT_EQ(com::FromVariant(ArrayOf(VT_BSTR, sizeof(BSTR), 1), NoObject), Value(Array{""}));
}

TEST_F(ComClient, TheDiameterSignIsThereInEveryCodePage) {
    constexpr unsigned char kDiameter = 248;
    EXPECT_EQ(com::CharacterAt(kDiameter, 1252), "ø");
    EXPECT_EQ(com::CharacterAt(kDiameter, 1250), "ř");
    EXPECT_EQ(com::CharacterAt(kDiameter, CP_UTF8), "ø");
    EXPECT_EQ(com::CharacterAt('A', CP_UTF8), "A");
}
