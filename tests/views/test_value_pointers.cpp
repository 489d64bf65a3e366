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
using Codes = std::vector<int>;

static_assert(!std::is_copy_constructible_v<NumberPtr> && !std::is_move_constructible_v<NumberPtr>,
              "the value knows the pointer by its address");

/// Two values of the tree, and an owner that keeps the codes it hears.
struct ValuePointers : testing::Test, IObserver
{
    ~ValuePointers() override
    {
        for (const char* path : {"Test/Number", "Test/Other", "Test/List", "Test/Selection"})
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
    Number* number = tree.Create<Number>("Test/Number");
    Number* other = tree.Create<Number>("Test/Other");
    Codes codes;
    Observable* lastSource = nullptr;
    std::function<void()> onCall;
    NumberPtr pointer{this};
};

TEST_F(ValuePointers, BindByPathAndTypeAndDropTheOldBindingWhateverFollows)
{
    tree.Create<values::ValueList<double>>("Test/List");
    for (const char* bad : {"Test/Nothing", "Test/List", ""}) {
        EXPECT_TRUE(pointer.SetPath("Test/Number"));
        EXPECT_EQ(number->ObserverCount(), 2U); // pointer and owner
        EXPECT_FALSE(pointer.SetPath(bad)) << bad;
        EXPECT_EQ(pointer.Get(), nullptr);
        EXPECT_EQ(number->ObserverCount(), 0U);
    }
    EXPECT_FALSE(pointer.IsFrom(nullptr)); // an unbound pointer matches nothing
    EXPECT_TRUE(pointer.SetPath("Test/Number"));
    EXPECT_TRUE(pointer.SetPath("Test/Other"));
    number->SetValue(1.0);
    EXPECT_EQ(taken(), Codes{}); // binding is silent, the old value is gone
    other->SetValue(2.0);
    EXPECT_EQ(taken(), Codes{3});
}

TEST_F(ValuePointers, ReplayTheStateOfTheValue)
{
    pointer.NotifyOwner();
    EXPECT_EQ(taken(), Codes{});
    pointer.SetPath("Test/Number");
    pointer.NotifyOwner();
    EXPECT_EQ(taken(), (Codes{2, 4, 3}));
    EXPECT_EQ(lastSource, number);

    tree.Create<values::ValueSelection>("Test/Selection");
    ASSERT_TRUE(pointer.SetPath("Test/Selection"));
    pointer.NotifyOwner();
    EXPECT_EQ(taken(), (Codes{2, 4, 7, 3}));
    onCall = [&] { tree.Remove("Test/Selection"); }; // in the midst of the replay
    pointer.NotifyOwner();
    EXPECT_EQ(pointer.Get(), nullptr);
    EXPECT_EQ(codes.back(), 3);
    EXPECT_EQ(lastSource, nullptr);
}

TEST_F(ValuePointers, LetGoOfAValueThatGoesAwayAndOfNoOther)
{
    NumberPtr second(this);
    values::ValuePtr<Number> plain;
    for (values::ValuePtr<Number>* bound :
         {&plain, static_cast<decltype(&plain)>(&pointer), static_cast<decltype(&plain)>(&second)})
        bound->SetPath("Test/Number");
    number->Notify(ccState); // alive: nothing
    EXPECT_EQ(pointer.Get(), number);
    number->SetValue(5.0);
    EXPECT_EQ(taken(), (Codes{2, 3})); // once a change, for both roles
    second.SetPath("Test/Other");
    number->SetValue(6.0);
    EXPECT_EQ(taken(), Codes{3}); // the first role still hears
    second.SetPath("Test/Number");

    tree.Remove("Test/Number");
    EXPECT_TRUE(!pointer.Get() && !second.Get() && !plain.Get());
    pointer.Update(nullptr, ccState); // unbound: nothing
}

TEST_F(ValuePointers, ReleaseTheirPathOnlyWhileBound)
{
    const int released = tree.ReleaseCount();
    pointer.Release();
    EXPECT_EQ(tree.ReleaseCount(), released);
    pointer.SetPath("Test/Number");
    pointer.Release();
    EXPECT_EQ(tree.ReleaseCount(), released + 1);
    EXPECT_EQ(number->ObserverCount(), 0U);
}

TEST(Formatters, WriteFixedPointWhateverTheLocale)
{
    QLocale::setDefault(QLocale::German);
    GLEyeStringFormatter eye;
    GLIQStringFormatter iq;
    GLTimeStringFormatter time;
    const std::pair<IStringFormatter*, const char*> rows[] = {
        {&eye, "12345.68"}, {&iq, "12345.7"}, {&time, "12345.7"}};
    for (const auto& [formatter, expected] : rows) {
        const QString& text = formatter->Format(12345.678);
        EXPECT_EQ(text, expected);
        EXPECT_EQ(&formatter->FormatWithUnit(12345.678), &text);
        EXPECT_EQ(text, QString(expected) + " t/T");
    }
    QLocale::setDefault(QLocale::c());
}

} // namespace
