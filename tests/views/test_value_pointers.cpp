// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "views/GLEyeStringFormatter.h"
#include "views/GLIQStringFormatter.h"
#include "views/GLTimeStringFormatter.h"
#include "views/ValueObservingPtr.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <functional>

namespace {

using Number = values::ValueNumeric<double>;
using NumberPtr = values::ValueObservingPtr<Number>;
using Codes = std::vector<int>;

static_assert(!std::is_copy_constructible_v<NumberPtr> && !std::is_move_constructible_v<NumberPtr>,
              "the value knows the pointer by its address");

/// An owner of pointers to values of the tree that keeps the codes it hears.
struct ValuePointers : testing::Test, IObserver
{
    ~ValuePointers() override
    {
        for (const char* path : {"Number", "Other", "List", "Selection"})
            tree.Remove(path);
    }
    void Update(Observable* source, TChangeCode code) override
    {
        codes.push_back(code);
        lastSource = source;
        if (onCall)
            onCall();
    }
    Codes taken() { return std::exchange(codes, {}); }

    values::Tree& tree = values::Tree::Instance();
    Number* number = tree.Create<Number>("Number");
    Number* other = tree.Create<Number>("Other");
    Codes codes;
    Observable* lastSource = nullptr;
    std::function<void()> onCall;
    NumberPtr pointer{this};
};

TEST_F(ValuePointers, BindByPathAndTypeAndDropTheOldBindingWhateverFollows)
{
    tree.Create<values::ValueList<double>>("List");
    const int released = tree.ReleaseCount();
    for (const char* bad : {"Nothing", "List", ""}) {
        EXPECT_TRUE(pointer.SetPath("Number"));
        EXPECT_EQ(number->ObserverCount(), 2U); // pointer and owner
        EXPECT_FALSE(pointer.SetPath(bad)) << bad;
        EXPECT_EQ(number->ObserverCount(), 0U);
    }
    EXPECT_FALSE(pointer.IsFrom(nullptr)); // an unbound pointer matches nothing
    pointer.Release();
    EXPECT_EQ(tree.ReleaseCount(), released);
    EXPECT_TRUE(pointer.SetPath("Number") && pointer.SetPath("Other"));
    number->SetValue(1.0);
    EXPECT_EQ(taken(), Codes{}); // binding is silent, the old value is gone
    other->SetValue(2.0);
    EXPECT_EQ(taken(), Codes{3});
    pointer.Release();
    EXPECT_EQ(tree.ReleaseCount(), released + 1);
    EXPECT_EQ(other->ObserverCount(), 0U);
}

TEST_F(ValuePointers, ReplayTheStateOfTheValue)
{
    pointer.NotifyOwner();
    EXPECT_EQ(taken(), Codes{});
    pointer.SetPath("Number");
    pointer.NotifyOwner();
    EXPECT_EQ(taken(), (Codes{2, 4, 3}));
    EXPECT_EQ(lastSource, number);
    tree.Create<values::ValueSelection>("Selection");
    pointer.SetPath("Selection");
    pointer.NotifyOwner();
    EXPECT_EQ(taken(), (Codes{2, 4, 7, 3}));
    onCall = [&] { tree.Remove("Selection"); }; // in the midst of the replay
    pointer.NotifyOwner();
    EXPECT_EQ(codes.back(), 3);
    EXPECT_EQ(lastSource, nullptr);
}

TEST_F(ValuePointers, LetGoOfAValueThatGoesAwayAndOfNoOther)
{
    NumberPtr second(this);
    values::ValuePtr<Number> plain;
    EXPECT_TRUE(pointer.SetPath("Number") && second.SetPath("Number") && plain.SetPath("Number"));
    number->Notify(ccState); // alive: nothing
    number->SetValue(5.0);
    EXPECT_EQ(taken(), (Codes{2, 3})); // once a change, for both roles
    second.SetPath("Other");
    number->SetValue(6.0);
    EXPECT_EQ(taken(), Codes{3}); // the first role still hears
    second.SetPath("Number");
    onCall = [&] { pointer.Update(nullptr, ccState); }; // unbound by now: nothing
    tree.Remove("Number");
    EXPECT_TRUE(!pointer.Get() && !second.Get() && !plain.Get());
}

TEST(Formatters, WriteFixedPointWhateverTheLocale)
{
    QLocale::setDefault(QLocale::German);
    GLEyeStringFormatter eye;
    GLIQStringFormatter iq;
    GLTimeStringFormatter time;
    for (const auto& [formatter, expected] :
         {std::pair<IStringFormatter*, QString>(&eye, "12345.68"),
          {&iq, "12345.7"},
          {&time, "12345.7"}}) {
        EXPECT_EQ(formatter->Format(12345.678), expected);
        EXPECT_EQ(formatter->FormatWithUnit(12345.678), expected + " t/T");
    }
    QLocale::setDefault(QLocale::c());
}

} // namespace
