// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/GLEyeStringFormatter.h"
#include "views/GLIQStringFormatter.h"
#include "views/GLTimeStringFormatter.h"
#include "views/ValueObservingPtr.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <type_traits>

namespace {

using Number = values::ValueNumeric<double>;
using NumberPtr = values::ValueObservingPtr<Number>;

static_assert(!std::is_copy_constructible_v<NumberPtr> && !std::is_move_constructible_v<NumberPtr>,
              "the value knows the pointer by its address");

struct Owner : IObserver
{
    void Update(Observable* source, TChangeCode code) override
    {
        calls.emplace_back(source, int(code));
        if (onCall)
            onCall(code);
    }
    std::vector<int> codes() const
    {
        std::vector<int> result;
        for (const auto& call : calls)
            result.push_back(call.second);
        return result;
    }
    std::vector<std::pair<Observable*, int>> calls;
    std::function<void(TChangeCode)> onCall;
};

/// Values at fixed paths for the length of a test.
struct ValuePointers : testing::Test
{
    ValuePointers()
        : number(tree.Create<Number>("Test/Number"))
        , other(tree.Create<Number>("Test/Other"))
        , list(tree.Create<values::ValueList<double>>("Test/List"))
    {}
    ~ValuePointers() override
    {
        for (const char* path : {"Test/Number", "Test/Other", "Test/List", "Test/Selection"})
            tree.Remove(path);
    }
    values::Tree& tree = values::Tree::Instance();
    Number* number;
    Number* other;
    values::ValueList<double>* list;
    Owner owner;
};

TEST_F(ValuePointers, BindByPathAndType)
{
    NumberPtr pointer(&owner);
    EXPECT_TRUE(pointer.SetPath("Test/Number"));
    EXPECT_EQ(number->ObserverCount(), 2U); // pointer and owner
    pointer.Reset(number);
    EXPECT_EQ(number->RegistrationCount(&owner), 1U);
    for (const char* bad : {"Test/Nothing", "Test/List", ""}) {
        EXPECT_TRUE(pointer.SetPath("Test/Number"));
        EXPECT_FALSE(pointer.SetPath(bad)) << bad;
        EXPECT_EQ(pointer.Get(), nullptr);
        EXPECT_EQ(number->ObserverCount(), 0U);
    }
    EXPECT_TRUE(pointer.SetPath("Test/Number"));
    EXPECT_TRUE(pointer.SetPath("Test/Other"));
    number->SetValue(1.0);
    EXPECT_TRUE(owner.calls.empty()); // binding is silent, the old value is gone
    other->SetValue(2.0);
    EXPECT_EQ(owner.codes(), std::vector<int>{3});
    EXPECT_FALSE(pointer.IsFrom(nullptr));
    pointer.Reset(nullptr);
    EXPECT_FALSE(pointer.IsFrom(nullptr)); // an unbound pointer matches nothing
}

TEST_F(ValuePointers, ReplayTheStateOfTheValue)
{
    NumberPtr pointer(&owner);
    pointer.NotifyOwner();
    EXPECT_TRUE(owner.calls.empty());
    pointer.SetPath("Test/Number");
    pointer.NotifyOwner();
    EXPECT_EQ(owner.codes(), (std::vector<int>{2, 4, 3}));
    EXPECT_EQ(owner.calls[2].first, number);

    tree.Create<values::ValueSelection>("Test/Selection");
    ASSERT_TRUE(pointer.SetPath("Test/Selection"));
    owner.calls.clear();
    pointer.NotifyOwner();
    EXPECT_EQ(owner.codes(), (std::vector<int>{2, 4, 7, 3}));

    owner.calls.clear();
    owner.onCall = [&](TChangeCode code) {
        if (code == ccState && pointer.Get())
            tree.Remove("Test/Selection"); // calls the owner once more, then the value is gone
    };
    pointer.NotifyOwner();
    EXPECT_EQ(pointer.Get(), nullptr);
    EXPECT_EQ(owner.calls.back(), (std::pair<Observable*, int>{nullptr, 3}));
}

TEST_F(ValuePointers, LetGoOfAValueThatGoesAwayAndOfNoOther)
{
    NumberPtr first(&owner);
    NumberPtr second(&owner);
    values::ValuePtr<Number> plain;
    for (auto* pointer : {&first, &second})
        pointer->SetPath("Test/Number");
    plain.SetPath("Test/Number");
    EXPECT_EQ(number->RegistrationCount(&owner), 2U);
    number->Notify(ccState); // alive: nothing
    EXPECT_EQ(first.Get(), number);
    number->SetValue(5.0);
    EXPECT_EQ(owner.codes(), (std::vector<int>{2, 3})); // once a change, for both roles

    // The second role goes elsewhere, the first still hears.
    second.SetPath("Test/Other");
    owner.calls.clear();
    number->SetValue(6.0);
    EXPECT_EQ(owner.codes(), std::vector<int>{3});
    second.SetPath("Test/Number");

    tree.Remove("Test/Number");
    EXPECT_TRUE(!first.Get() && !second.Get() && !plain.Get());
    first.Update(nullptr, ccState); // unbound: nothing
}

TEST_F(ValuePointers, DetachOnDestructionAndReleaseOnlyWhenTold)
{
    const int released = tree.ReleaseCount();
    {
        NumberPtr pointer(&owner);
        values::ValuePtr<Number> plain;
        pointer.SetPath("Test/Number");
        plain.SetPath("Test/Number");
    }
    EXPECT_EQ(number->ObserverCount(), 0U);
    EXPECT_EQ(tree.ReleaseCount(), released);
    NumberPtr pointer(&owner);
    pointer.Release();
    EXPECT_EQ(tree.ReleaseCount(), released);
    pointer.SetPath("Test/Number");
    pointer.Release();
    EXPECT_EQ(tree.ReleaseCount(), released + 1);
    EXPECT_EQ(number->ObserverCount(), 0U);
}

TEST(Formatters, WriteFixedPointWhateverTheLocale)
{
    QLocale::setDefault(QLocale(QLocale::German));
    GLEyeStringFormatter eye;
    GLIQStringFormatter iq;
    GLTimeStringFormatter time;
    EXPECT_EQ(eye.Format(0.0), QStringLiteral("0.00"));
    EXPECT_EQ(eye.FormatWithUnit(-2.5), QStringLiteral("-2.50 t/T"));
    for (IStringFormatter* formatter :
         {static_cast<IStringFormatter*>(&iq), static_cast<IStringFormatter*>(&time)}) {
        const QString& text = formatter->Format(12345.678);
        EXPECT_EQ(text, QStringLiteral("12345.7"));
        EXPECT_EQ(&formatter->FormatWithUnit(3.14159), &text);
        EXPECT_EQ(text, QStringLiteral("3.1 t/T"));
    }
    QLocale::setDefault(QLocale::c());
}

} // namespace
