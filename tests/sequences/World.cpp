// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "World.h"

#include "ViewSteps.h"
#include "platform/gui/ColorSet.h"
#include "platform/startup/TranslationCenter.h"

#include <QApplication>
#include <QMenu>
#include <QTimer>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

void require(bool isTrue, const char* what)
{
    if (isTrue)
        return;
    std::fprintf(stderr, "it does not fit together: %s\n", what);
    std::abort();
}

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
        for (const Place& place : places) {
            bool is = paintDepth > 0;
            place.with([&is](auto& view) {
                is = is || view.testAttribute(Qt::WA_WState_InPaintEvent);
                if constexpr (std::is_same_v<decltype(view), VCGLEyeDiagram&>)
                    is = is || TestAccess::diagram(view)->testAttribute(Qt::WA_WState_InPaintEvent);
            });
            if (is)
                return true;
        }
        return false;
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

    void createValue(const char* path, std::uint8_t type);
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

void World::Private::createValue(const char* path, std::uint8_t type)
{
    const QString name = path;
    switch (type % 5) {
    case 0:
    case 1:
        tree.Create<values::ValueList<double>>(name);
        break;
    case 2:
        tree.Create<values::Value<bool>>(name);
        break;
    case 3:
        tree.Create<values::ValueNumeric<double>>(name);
        break;
    default:
        tree.Create<values::ValueSelection>(name);
    }
}

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

struct Operation
{
    const char* name;
    In where;
    void (*perform)(World::Private& world, Place& place, const Step& step);
};

template<class Type>
Type* valueAt(const World::Private& world, const Step& step)
{
    return dynamic_cast<Type*>(world.tree.FindValue(pick(paths, step.first)));
}

constexpr Operation operations[] = {
    {"create a view", In::NoPaint,
     [](World::Private& world, Place& place, const Step& step) {
         QWidget* const parent = step.second % 2 ? &world.window : nullptr;
         if (step.first % 3 == 0)
             place.create<VCGLTimeDiagram>(parent);
         else if (step.first % 3 == 1)
             place.create<VCGLEyeDiagram>(parent);
         else
             place.create<VCGLIQDiagram>(parent);
     }},
    {"destroy a view", In::NoPaint,
     [](World::Private&, Place& place, const Step&) { place.widget.reset(); }},
    {"bind", In::Anything,
     [](World::Private&, Place& place, const Step& step) {
         place.with([&](auto& view) { bind(view, step.second, pick(paths, step.first)); });
     }},
    {"create a value", In::Anything,
     [](World::Private& world, Place&, const Step& step) {
         world.createValue(pick(paths, step.first), step.second);
     }},
    {"remove a value", In::Anything,
     [](World::Private& world, Place&, const Step& step) {
         world.tree.Remove(pick(paths, step.first));
     }},
    {"fill a list", In::Anything,
     [](World::Private& world, Place&, const Step& step) {
         if (auto* list = valueAt<values::ValueList<double>>(world, step))
             list->GetList() = nastyData<std::list<double>>(step.object, step.second);
     }},
    {"trigger", In::Anything,
     [](World::Private& world, Place&, const Step& step) {
         if (auto* trigger = valueAt<values::Value<bool>>(world, step))
             trigger->SetValue(step.second % 2);
     }},
    {"set a number", In::Anything,
     [](World::Private& world, Place&, const Step& step) {
         if (auto* number = valueAt<values::ValueNumeric<double>>(world, step))
             number->SetValue(nastyNumber(step.second));
     }},
    {"give data", In::Anything,
     [](World::Private&, Place& place, const Step& step) {
         place.with([&](auto& view) { give(view, step.first, step.second); });
     }},
    {"resize", In::NoPaint,
     [](World::Private&, Place& place, const Step& step) {
         if (place.widget)
             place.widget->resize(std::min(nastyLength(step.first), 8192),
                                  std::min(nastyLength(step.second), 8192) /
                                      (step.first % 2 ? 64 : 1));
     }},
    {"show or hide", In::NoPaint,
     [](World::Private& world, Place& place, const Step& step) {
         if (!place.widget)
             return;
         place.widget->setVisible(step.first % 2);
         world.window.setVisible(step.first % 4);
     }},
    {"paint", In::NoPaint,
     [](World::Private& world, Place& place, const Step& step) {
         if (world.depth > 1)
             return;
         ++world.paintDepth;
         place.with([&](auto& view) { paint(view, step.first, step.second); });
         --world.paintDepth;
     }},
    {"use a page", In::Anything,
     [](World::Private&, Place& place, const Step& step) {
         place.with([&](auto& view) { page(place, view, step.first, step.second); });
     }},
    {"pause", In::Anything,
     [](World::Private&, Place& place, const Step& step) {
         place.with([&](auto& view) { view.GetToolbarCaption()->setPaused(step.first % 2); });
     }},
    {"set the language", In::Anything,
     [](World::Private&, Place&, const Step& step) {
         TranslationCenter::Instance().SetLanguage(step.first % 2 ? "de" : "");
     }},
    {"move to a parent", In::NoPaint,
     [](World::Private& world, Place& place, const Step& step) {
         if (place.widget)
             place.widget->setParent(step.first % 2 ? &world.window : nullptr);
     }},
    {"scale", In::Anything,
     [](World::Private&, Place& place, const Step&) {
         place.with([](auto& view) { view.AutoScale(); });
     }},
    {"set an axis", In::Anything,
     [](World::Private&, Place& place, const Step& step) {
         place.with([&](auto& view) { axes(view, step.first, step.second); });
     }},
    {"point", In::NoPaint,
     [](World::Private&, Place& place, const Step& step) {
         place.with([&](auto& view) { point(view, step.first, step.second); });
     }},
    {"arm an observer", In::Anything,
     [](World::Private& world, Place& place, const Step& step) {
         world.observer.armed = 1 + step.first % 3;
         place.with([&](auto& view) {
             TestAccess::xAxis(view)->Attach(&world.observer);
             if constexpr (!std::is_same_v<decltype(view), VCGLEyeDiagram&>)
                 TestAccess::diagram(view)->GetYAxisHandler()->Attach(&world.observer);
         });
     }},
    {"process events", In::NoPaint,
     [](World::Private&, Place&, const Step&) { QCoreApplication::processEvents(); }},
    {"open a dialog", In::NoPaint,
     [](World::Private& world, Place& place, const Step& step) {
         world.inDialog(place, step.first, step.second % 6);
     }},
    {"set colours", In::Anything,
     [](World::Private&, Place&, const Step& step) {
         ColorSet::Instance().SetScheme(static_cast<ColorSet::Scheme>(step.first % 2));
     }},
    {"change texts", In::Anything,
     [](World::Private&, Place& place, const Step& step) {
         place.with([&](auto& view) { texts(view, step.first, step.second); });
     }},
    {"look at a stray value", In::Anything, [](World::Private& world, Place&, const Step&) {
         values::ValueObservingPtr<values::Value<bool>> pointer(&world.observer);
         values::Value<bool> stray("stray");
         pointer.Reset(&stray);
         pointer.NotifyOwner();
     }}};

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
        operation.perform(*this, places[step.object % places.size()], step);
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
