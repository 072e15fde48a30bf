// SPDX-License-Identifier: MIT
// The values that screen readers get.

#include "kx/win/Oleacc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace kx {
namespace {

class AccessibleNumbers : public ::testing::Test {
protected:
    /// The next ones, as many as there are of `count`.
    static std::vector<LONG> Next(IEnumVARIANT& numbers, ULONG count, HRESULT expected) {
        std::vector<VARIANT> values(count);
        ULONG fetched = 77;
        EXPECT_EQ(numbers.Next(count, values.data(), &fetched), expected);
        std::vector<LONG> result;
        for (ULONG i = 0; i < std::min<ULONG>(fetched, count); ++i) {
            EXPECT_EQ(values[i].vt, VT_I4);
            result.push_back(values[i].lVal);
        }
        return result;
    }

    const unique_com<IEnumVARIANT> Numbers{NewNumbers({3, 5, 8})};
    IEnumVARIANT& All = *Numbers.get();
};

using TLongs = std::vector<LONG>;

TEST_F(AccessibleNumbers, ComeOneAfterTheOther) {
    EXPECT_EQ(Next(All, 2, S_OK), (TLongs{3, 5}));
    EXPECT_EQ(Next(All, 2, S_FALSE), TLongs{8});
    EXPECT_EQ(Next(All, 1, S_FALSE), TLongs{});
    EXPECT_EQ(All.Reset(), S_OK);
    VARIANT value{};
    EXPECT_EQ(All.Next(1, &value, nullptr), S_OK) << "who takes one need not ask how many";
    EXPECT_EQ(value.lVal, 3);
    EXPECT_EQ(All.Next(1, nullptr, nullptr), E_INVALIDARG);
}

TEST_F(AccessibleNumbers, AreSkipped) {
    EXPECT_EQ(All.Skip(3), S_OK);
    EXPECT_EQ(Next(All, 1, S_FALSE), TLongs{});
    All.Reset();
    EXPECT_EQ(All.Skip(1), S_OK);
    EXPECT_EQ(Next(All, 1, S_OK), TLongs{5});
    EXPECT_EQ(All.Skip(ULONG_MAX), S_FALSE);
    EXPECT_EQ(Next(All, 1, S_FALSE), TLongs{});
}

TEST_F(AccessibleNumbers, ACopyGoesOnFromTheSamePlace) {
    All.Skip(1);
    IEnumVARIANT* made = nullptr;
    ASSERT_EQ(All.Clone(&made), S_OK);
    const unique_com<IEnumVARIANT> copy(made);
    EXPECT_EQ(Next(*made, 9, S_FALSE), (TLongs{5, 8}));
    EXPECT_EQ(Next(All, 9, S_FALSE), (TLongs{5, 8})) << "and each by itself";
    EXPECT_EQ(All.Clone(nullptr), E_INVALIDARG);
}

TEST_F(AccessibleNumbers, AreSharedByTheirInterfaces) {
    void* found = nullptr;
    ASSERT_EQ(All.QueryInterface(__uuidof(IEnumVARIANT), &found), S_OK);
    EXPECT_EQ(static_cast<IEnumVARIANT*>(found)->Release(), 1u);
    ASSERT_EQ(All.QueryInterface(__uuidof(IUnknown), &found), S_OK);
    EXPECT_EQ(static_cast<IUnknown*>(found)->Release(), 1u);
    EXPECT_EQ(All.QueryInterface(__uuidof(IDispatch), &found), E_NOINTERFACE);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(All.QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);
}

TEST(AccessibleTexts, AnEmptyOneIsNone) {
    BSTR text = nullptr;
    EXPECT_EQ(GiveText("", &text), S_FALSE);
    EXPECT_EQ(text, nullptr);
    ASSERT_EQ(GiveText("Jos", &text), S_OK);
    EXPECT_EQ(std::wstring(text, SysStringLen(text)), L"Jos");
    SysFreeString(text);
}

TEST(AccessibleObjects, WithoutOneThereIsNoAnswer) {
    EXPECT_EQ(AnswerWithObject(0, nullptr), 0) << "an error is no answer";
    EXPECT_FALSE(StandardObject(nullptr));
    EXPECT_EQ(ObjectOfWindow(nullptr), nullptr);
}

TEST(AccessibleObjects, AreGivenByThreadsThatDoNotUseComToo) {
    LRESULT answer = 0;
    std::thread([&] {
        const unique_com<IAccessible> object = StandardObject(GetDesktopWindow());
        answer = AnswerWithObject(0, object.get());
        CoUninitialize();
    }).join();
    EXPECT_GT(answer, 0);
}

} // namespace
} // namespace kx
