// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "World.h"

#include "../fuzz/Attack.h"
#include "ViewSteps.h"
#include "platform/gui/ColorSet.h"
#include "platform/startup/TranslationCenter.h"

#include <QApplication>
#include <QMenu>
#include <QTimer>

#include <array>
#include <random>

namespace {

constexpr const char* paths[] = {"A", "B", "C", "D", "E", "F"};

} // namespace

struct World::Private
{
    /// An observer of an axis that runs a step when it is told.
    struct Observer : IObserver
    {
        void Update(Observable*, TChangeCode) override
        {
            if (armed-- > 0 && !world->isPainting())
                world->next();
        }
        Private* world = nullptr;
        int armed = 0;
    };

    Private() { observer.world = this; }
    bool isPainting() const
    {
        bool is = paintDepth > 0;
        for (const Place& place : places) {
            place.with([&is](auto& view) {
                is = is || view.testAttribute(Qt::WA_WState_InPaintEvent);
                if constexpr (std::is_same_v<decltype(view), VCGLEyeDiagram&>)
                    is = is || TestAccess::diagram(view)->testAttribute(Qt::WA_WState_InPaintEvent);
            });
        }
        return is;
    }
    void next()
    {
        if (position >= steps.size() || depth > 12)
            return;
        ++depth;
        const Step step = steps[position++];
        perform(step);
        --depth;
        for (const Place& place : places) {
            place.with([](auto& view) {
                if constexpr (!std::is_same_v<decltype(view), VCGLEyeDiagram&>)
                    require(TestAccess::recordCount(view) <= 101, "the number of traces");
            });
        }
    }
    void perform(const Step& step);

    void inDialog(Place& place, std::uint8_t way, int count);

    values::Tree& tree = values::Tree::Instance();
    QWidget window;
    Observer observer;
    std::array<Place, 3> places;
    std::vector<Step> steps;
    std::size_t position = 0;
    int depth = 0;
    int paintDepth = 0;
    int dialogDepth = 0;
};

/// Opens the settings by their action, or a menu and the settings from there, and runs steps.
void World::Private::inDialog(Place& place, std::uint8_t way, int count)
{
    if (dialogDepth > 1)
        return;
    ++dialogDepth;
    const auto runSteps = [this, count] {
        for (int i = 0; i < count; ++i)
            next();
        if (QWidget* dialog = QApplication::activeModalWidget())
            dialog->close();
    };
    place.with([&](auto& view) {
        auto* diagram = TestAccess::diagram(view);
        QMenu* menu = diagram->getContextMenu(nullptr, nullptr, 0);
        QObject scope; // nothing runs after it
        QTimer::singleShot(0, &scope, [&, menu = QPointer<QMenu>(menu)] {
            if (way % 2 == 0 || !menu) {
                runSteps();
                return;
            }
            QTimer::singleShot(0, &scope, runSteps);
            menu->setActiveAction(menu->actions().front());
            QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, {});
            QCoreApplication::sendEvent(menu, &event);
        });
        if (way % 2 == 0)
            diagram->ShowProperties();
        else
            menu->exec();
    });
    --dialogDepth;
}

namespace {

/// A step inside of a paint may not end what is painted; in notifications and dialogs it may.
enum class In { Anything, NoPaint };

/// What an operation is done with.
struct At
{
    World::Private& world;
    Place& place;
    const Step& step;

    const char* path() const { return pick(paths, step.first); }
    bool isOdd() const { return step.first % 2 == 1; }
    QWidget* parent(std::uint8_t number) const { return number % 2 ? &world.window : nullptr; }
    template<class Type>
    Type* value() const
    {
        return dynamic_cast<Type*>(world.tree.FindValue(path()));
    }
    /// With the view and two numbers, if there is one.
    template<class Action>
    void with(const Action& action) const
    {
        place.with([&](auto& view) { action(view, step.first, step.second); });
    }
};

struct Operation
{
    const char* name;
    In where;
    void (*perform)(At at);
};

void create(At at)
{
    using Creation = void (Place::*)(QWidget*);
    constexpr Creation kinds[] = {&Place::create<VCGLTimeDiagram>, &Place::create<VCGLEyeDiagram>,
                                  &Place::create<VCGLIQDiagram>};
    (at.place.*pick(kinds, at.step.first))(at.parent(at.step.second));
}

template<class Type>
void createValue(At at)
{
    at.world.tree.Create<Type>(at.path());
}

void createAnyValue(At at)
{
    using Numbers = values::ValueList<double>;
    constexpr void (*kinds[])(At) = {
        createValue<Numbers>, createValue<Numbers>, createValue<values::Value<bool>>,
        createValue<values::ValueNumeric<double>>, createValue<values::ValueSelection>};
    pick(kinds, at.step.second)(at);
}

template<class Type, class Content>
void set(At at, Content content)
{
    if (auto* value = at.value<Type>())
        value->SetValue(content);
}

void resize(At at)
{
    constexpr int most = 8192;
    if (at.place.widget)
        at.place.widget->resize(std::min(nastyLength(at.step.first), most),
                                std::min(nastyLength(at.step.second), most) /
                                    (at.isOdd() ? 64 : 1));
}

void showOrHide(At at)
{
    if (!at.place.widget)
        return;
    at.place.widget->setVisible(at.isOdd());
    at.world.window.setVisible(at.step.first % 4);
}

void paint(At at)
{
    if (at.world.depth > 1)
        return;
    ++at.world.paintDepth;
    at.with([](auto& view, auto first, auto second) { paint(view, first, second); });
    --at.world.paintDepth;
}

void armObserver(At at)
{
    IObserver* const observer = &at.world.observer;
    at.world.observer.armed = 1 + at.step.first % 3;
    at.place.with([observer](auto& view) {
        TestAccess::xAxis(view)->Attach(observer);
        if constexpr (!std::is_same_v<decltype(view), VCGLEyeDiagram&>)
            TestAccess::diagram(view)->GetYAxisHandler()->Attach(observer);
    });
}

void lookAtStrayValue(At at)
{
    values::ValueObservingPtr<values::Value<bool>> pointer(&at.world.observer);
    values::Value<bool> stray("stray");
    pointer.Reset(&stray);
    pointer.NotifyOwner();
}

constexpr Operation operations[] = {
    {"create a view", In::NoPaint, create},
    {"destroy a view", In::NoPaint, [](At at) { at.place.widget.reset(); }},
    {"bind", In::Anything,
     [](At at) { at.with([&](auto& view, auto, auto role) { bind(view, role, at.path()); }); }},
    {"create a value", In::Anything, createAnyValue},
    {"remove a value", In::Anything, [](At at) { at.world.tree.Remove(at.path()); }},
    {"fill a list", In::Anything,
     [](At at) {
         if (auto* list = at.value<values::ValueList<double>>())
             list->GetList() = nastyData<std::list<double>>(at.step.object, at.step.second);
     }},
    {"trigger", In::Anything, [](At at) { set<values::Value<bool>>(at, at.step.second % 2 == 1); }},
    {"set a number", In::Anything,
     [](At at) { set<values::ValueNumeric<double>>(at, nastyNumber(at.step.second)); }},
    {"give data", In::Anything,
     [](At at) { at.with([](auto& view, auto a, auto b) { give(view, a, b); }); }},
    {"resize", In::NoPaint, resize},
    {"show or hide", In::NoPaint, showOrHide},
    {"paint", In::NoPaint, paint},
    {"use a page", In::Anything,
     [](At at) { at.with([&](auto& view, auto a, auto b) { page(at.place, view, a, b); }); }},
    {"pause", In::Anything,
     [](At at) {
         at.place.with([&](auto& view) { view.GetToolbarCaption()->setPaused(at.isOdd()); });
     }},
    {"set the language", In::Anything,
     [](At at) { TranslationCenter::Instance().SetLanguage(at.isOdd() ? "de" : ""); }},
    {"move to a parent", In::NoPaint,
     [](At at) {
         if (at.place.widget)
             at.place.widget->setParent(at.parent(at.step.first));
     }},
    {"scale", In::Anything, [](At at) { at.place.with([](auto& view) { view.AutoScale(); }); }},
    {"set an axis", In::Anything,
     [](At at) { at.with([](auto& view, auto a, auto b) { axes(view, a, b); }); }},
    {"point", In::NoPaint,
     [](At at) { at.with([](auto& view, auto a, auto b) { point(view, a, b); }); }},
    {"arm an observer", In::Anything, armObserver},
    {"process events", In::NoPaint, [](At) { QCoreApplication::processEvents(); }},
    {"open a dialog", In::NoPaint,
     [](At at) { at.world.inDialog(at.place, at.step.first, at.step.second % 6); }},
    {"set colours", In::Anything,
     [](At at) { ColorSet::Instance().SetScheme(ColorSet::Scheme(at.step.first % 2)); }},
    {"change texts", In::Anything,
     [](At at) { at.with([](auto& view, auto a, auto b) { texts(view, a, b); }); }},
    {"look at a stray value", In::Anything, lookAtStrayValue}};

const Operation& operationOf(const Step& step)
{
    return operations[step.operation % std::size(operations)];
}

} // namespace

std::string World::name(const Step& step)
{
    return std::string(operationOf(step).name) + " " + std::to_string(step.object % 3) + " (" +
           std::to_string(step.object) + ", " + std::to_string(step.first) + ", " +
           std::to_string(step.second) + ")";
}

void World::Private::perform(const Step& step)
{
    const Operation& operation = operationOf(step);
    if (operation.where == In::Anything || !isPainting())
        operation.perform({*this, places[step.object % places.size()], step});
}

std::vector<Step> randomSteps(unsigned seed)
{
    std::mt19937 random(seed);
    std::vector<Step> steps(20 + random() % 100);
    for (Step& step : steps) {
        const auto bits = static_cast<std::uint32_t>(random());
        std::memcpy(&step, &bits, sizeof step);
    }
    constexpr Step usual[] = {{0, 0, 0, 0}, {0, 1, 1, 1}, {0, 2, 2, 0}, {3, 0, 0, 0}, {3, 0, 1, 0},
                              {3, 0, 2, 2}, {3, 0, 3, 3}, {2, 0, 0, 0}, {2, 0, 1, 1}, {2, 0, 2, 2},
                              {2, 1, 0, 0}, {2, 1, 1, 1}, {2, 1, 2, 2}, {2, 2, 0, 0}, {2, 2, 1, 1},
                              {2, 2, 2, 2}, {5, 7, 0, 1}, {5, 7, 1, 8}};
    if (seed % 2 == 0)
        steps.insert(steps.begin(), std::begin(usual), std::end(usual));
    return steps;
}

World::World()
    : d(std::make_unique<Private>())
{}

World::~World()
{
    d->observer.armed = 0;
    for (Place& place : d->places) {
        place.page.reset();
        place.widget.reset();
        require(!place.watched, "a view outlives its end");
    }
    for (const char* path : paths) {
        if (const values::ValueBase* value = d->tree.FindValue(path))
            require(value->ObserverCount() == 0, "observers that are left");
        d->tree.Remove(path);
    }
    d.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (const QWidget* widget : QApplication::topLevelWidgets())
        require(!widget->isVisible(), "a window that is left");
}

void World::run(const std::vector<Step>& steps)
{
    d->steps = steps;
    d->position = 0;
    while (d->position < d->steps.size())
        d->next();
}
