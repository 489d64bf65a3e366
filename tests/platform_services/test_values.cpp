// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Binding.h"
#include "platform/values/ListFeed.h"
#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <QTest>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <thread>

namespace {

using Codes = std::vector<TChangeCode>;

/// Keeps the codes it hears, then does what a test wants.
struct Probe : IObserver
{
    void Update(Observable* source, TChangeCode code) override
    {
        codes.push_back(code);
        if (onUpdate)
            onUpdate(source, code);
    }
    Codes codes;
    std::function<void(Observable*, TChangeCode)> onUpdate;
};

TEST(Observable, CountsRegistrationsAndCallsOnceAChange)
{
    Observable subject;
    Probe twice;
    subject.Attach(&twice);
    subject.Attach(&twice);
    subject.Attach(nullptr);
    subject.Notify(ccContent);
    subject.Detach(&twice); // one role let go, the other still hears
    subject.Notify(ccAttributes);
    subject.Detach(&twice);
    subject.Detach(&twice);
    subject.Notify(ccSelection);
    EXPECT_EQ(twice.codes, (Codes{ccContent, ccAttributes}));
}

TEST(Observable, LetsObserversComeAndGoWhileItNotifies)
{
    Observable subject;
    Probe first, gone, newcomer;
    first.onUpdate = [&](Observable*, TChangeCode) {
        subject.Detach(&gone);
        subject.Attach(&newcomer);
    };
    subject.Attach(&first);
    subject.Attach(&gone);
    subject.Notify(ccContent);
    EXPECT_EQ(gone.codes, Codes{});
    EXPECT_EQ(newcomer.codes, Codes{}) << "waits for the next notification";
    EXPECT_EQ(subject.ObserverCount(), 2u);
}

struct Tracked : values::ValueNumeric<double>
{
    using ValueNumeric<double>::ValueNumeric;
    ~Tracked() override { ++destroyed; }
    static inline int destroyed = 0;
};

struct Values : testing::Test
{
    Probe probe; // outlives the tree, which tells it that its values go
    Probe other;
    values::Tree tree;
    const QString path = QStringLiteral("Receiver/Level");
};

TEST_F(Values, ArePutAtFreePathsAndFoundByType)
{
    auto* level = tree.Create<values::ValueSelection>(path);
    EXPECT_EQ(tree.Create<values::Value<bool>>(path), nullptr);
    EXPECT_EQ(tree.Create<values::Value<bool>>(QString()), nullptr);
    tree.ReleaseValue(path); // the host's value all the same
    EXPECT_EQ(dynamic_cast<values::ValueNumeric<double>*>(tree.FindValue(path)), level);
    EXPECT_EQ(dynamic_cast<values::ValueList<double>*>(tree.FindValue(path)), nullptr);
    auto* list = tree.Create<values::ValueList<double>>("List");
    list->Attach(&probe);
    const double numbers[] = {1.0, 2.0};
    list->Assign(numbers, numbers + 2);
    EXPECT_EQ(probe.codes, Codes{ccContent});
    struct Own : values::ValueBase
    {
        using ValueBase::ValueBase;
    };
    tree.Create<Own>("Own");
    QStringList listed;
    for (const values::ValueBase* value : tree.Values())
        listed += value->GetPathName() + ' ' + values::TypeName(*value).section("::", -1);
    EXPECT_EQ(listed, (QStringList{"List ValueList<double>", "Own Own", path + " ValueSelection"}));
}

TEST_F(Values, LeaveTheTreeWhoeverDestroysThem)
{
    tree.Watch(path, &probe);
    auto* value = tree.Create<values::Value<bool>>(path);
    value->Attach(&other);
    other.onUpdate = [&](Observable* source, TChangeCode) {
        EXPECT_EQ(tree.FindValue(path), nullptr);
        source->Detach(&other);
    };
    delete value;
    EXPECT_EQ(other.codes, Codes{ccState});
    probe.onUpdate = [&](Observable*, TChangeCode code) {
        if (code == ccContent)
            tree.Remove(path);
    };
    EXPECT_EQ(tree.Create<values::Value<bool>>(path), nullptr); // who watches it removed it at once
    EXPECT_EQ(probe.codes, (Codes{ccContent, ccState, ccContent, ccState}));
    tree.Unwatch(path, &probe);
    tree.Unwatch("Nothing", &probe);
    EXPECT_NE(tree.Create<values::Value<bool>>(path), nullptr);
}

TEST(Binding, TriesAgainWheneverAValueAppearsAtItsPath)
{
    values::Tree& tree = values::Tree::Instance();
    QStringList tried;
    auto role = std::make_unique<QObject>();
    std::unique_ptr<values::Binding> binding;
    const auto setter = [&](const QString& path) {
        tried += path;
        return dynamic_cast<values::Value<bool>*>(tree.FindValue(path)) != nullptr;
    };
    const auto expect = [&](const QStringList& paths, bool isBound) {
        EXPECT_EQ(std::exchange(tried, {}), paths);
        EXPECT_EQ(binding->isBound(), isBound);
    };
    binding = std::make_unique<values::Binding>(*role, setter, "A");
    expect({"A"}, false);
    tree.Create<values::ValueList<double>>("A"); // of another type
    tree.Create<values::Value<bool>>("B");
    expect({"A"}, false);
    binding->setPath("B");
    tree.Remove("A");
    expect({"B"}, true);
    tree.Remove("B");
    expect({}, false);
    tree.Create<values::Value<bool>>("B");
    expect({"B"}, true);
    role.reset();
    binding->setPath("A");
    expect({}, false);
    role = std::make_unique<QObject>();
    binding = std::make_unique<values::Binding>(
        *role,
        [&](const QString&) {
            binding.reset(); // whoever hears of what is bound may end it
            return true;
        },
        "C");
    tree.Create<values::Value<bool>>("C");
    EXPECT_EQ(binding, nullptr);
    for (const char* path : {"B", "C"})
        tree.Remove(path);
}

TEST_F(Values, LeaveTheTreeBeforeTheirObserversHearAndDieOnceTheOutermostNotificationEnds)
{
    auto* value = tree.Create<Tracked>(path);
    int depth = 0;
    probe.onUpdate = [&](Observable* source, TChangeCode code) {
        if (code == ccContent && ++depth < 3) {
            value->SetValue(depth); // removed two levels down
        } else if (code == ccContent) {
            EXPECT_TRUE(tree.Remove(path));
            EXPECT_FALSE(tree.Remove(path));
            EXPECT_NE(tree.Create<Tracked>(path), nullptr) << "the path is free at once";
        } else if (code == ccState) {
            EXPECT_EQ(value->GetState(), values::ValueBase::StateRemoved);
            EXPECT_EQ(tree.FindValue(path), nullptr);
            source->Notify(ccAttributes); // speaks while it is going
        }
    };
    other.onUpdate = [](auto...) { EXPECT_EQ(Tracked::destroyed, 0); };
    for (Probe* view : {&probe, &other, &other}) // one of them in two roles
        value->Attach(view);
    value->SetValue(0);
    EXPECT_EQ(Tracked::destroyed, 1);
    EXPECT_EQ(other.codes, (Codes{ccAttributes, ccState, ccContent, ccContent, ccContent}));
    EXPECT_TRUE(tree.Remove(path));
    EXPECT_EQ(Tracked::destroyed, 2);
}

TEST(ListFeed, BringsTheBlocksOfAThreadInOrderAndCountsWhatIsTooMuch)
{
    values::Tree& tree = values::Tree::Instance();
    auto* list = tree.Create<values::ValueList<double>>("ListFeed/A");
    auto* trigger = tree.Create<values::Value<bool>>("ListFeed/Trigger");
    std::vector<double> received;
    Probe probe;
    probe.onUpdate = [&](Observable*, TChangeCode) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        received.insert(received.end(), list->GetList().begin(), list->GetList().end());
    };
    trigger->Attach(&probe);
    {
        values::ListFeed feed({"ListFeed/A", "ListFeed/None"}, "ListFeed/Trigger");
        feed.setFrameRate(1000.0);
        for (const double ignored : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()})
            feed.setFrameRate(ignored);
        std::thread producer([&feed] {
            for (int k = 0; k < 3000; k += 3)
                EXPECT_TRUE(feed.push({{k + 0.0, k + 1.0, k + 2.0}, {0.0}, {0.0}}));
        });
        EXPECT_TRUE(QTest::qWaitFor([&] { return received.size() == 3000; }));
        producer.join();
        for (std::size_t k = 0; k < received.size(); ++k)
            EXPECT_EQ(received[k], double(k));
        EXPECT_EQ(feed.leftOutCount(), 0);
        std::vector<qint64> told;
        QObject::connect(&feed, &values::ListFeed::leftOut,
                         [&told](qint64 count) { told.push_back(count); });
        feed.setCapacity(2);
        EXPECT_TRUE(feed.push({{1.0, 2.0, 3.0}}));
        EXPECT_FALSE(feed.push({{4.0}}));
        EXPECT_EQ(feed.leftOutCount(), 1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return received.size() == 3003; }));
        EXPECT_EQ(told, std::vector<qint64>{1});
    }
    trigger->Detach(&probe);
    tree.Remove("ListFeed/A");
    tree.Remove("ListFeed/Trigger");
}

} // namespace
