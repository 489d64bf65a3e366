// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "World.h"

#include "eye/GLEyeDiagram.h"
#include "foundations/GLOrvanePropertyPage.h"
#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/CaptionWidget.h"
#include "platform/glwidgets/DiagramCaption.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"
#include "platform/startup/TranslationCenter.h"
#include "time/GLTimeDiagram.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"

#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QDoubleSpinBox>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QSpinBox>
#include <QTimer>
#include <QWheelEvent>

#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>

struct TestAccess
{
    template<class View>
    static auto* diagram(View& view)
    {
        return view.Diagram();
    }
    template<class View>
    static std::shared_ptr<XAxisWidget> xAxis(View& view)
    {
        return view.m_xAxis;
    }
    template<class View>
    static std::size_t recordCount(View& view)
    {
        return view.Diagram()->m_records.size();
    }
};

namespace {

void require(bool isTrue, const char* what)
{
    if (isTrue)
        return;
    std::fprintf(stderr, "it does not fit together: %s\n", what);
    std::abort();
}

template<class T, std::size_t size>
T pick(const T (&values)[size], std::uint8_t number)
{
    return values[number % size];
}

double nastyNumber(std::uint8_t number)
{
    constexpr double values[] = {0.0,       1.0,    -1.0,         0.5,      100.0,    -100.0,
                                 3.0,       1000.0, -0.0,         1e-300,   1e300,    -1e300,
                                 1e35,      5e-324, DBL_MAX,      -DBL_MAX, INFINITY, NAN,
                                 -INFINITY, 1e9,    2147483648.0, 1e19,     1e-9,     -7.0};
    return pick(values, number);
}

int nastyLength(std::uint8_t number)
{
    constexpr int values[] = {0, 1, 2, 3, 7, 100, 400, 1000, 1999, 8192, -1, INT_MAX, INT_MIN};
    return pick(values, number);
}

/// Of a list or a data set.
template<class Container>
Container nastyData(std::uint8_t lengthNumber, std::uint8_t content)
{
    constexpr int lengths[] = {4, 0, 1, 2, 3, 5, 64, 100, 1001, 5000};
    Container data;
    const int length = pick(lengths, lengthNumber);
    for (int i = 0; i < length; ++i) {
        double value = content % 3 == 0 ? nastyNumber(static_cast<std::uint8_t>(content / 3 + i))
                                        : std::sin(i * 0.1) * (content % 7);
        if (content % 3 == 2) // as markers are
            value = i % (1 + content / 3) == 0 ? 1 + content / 3 : 0;
        data.push_back(static_cast<typename Container::value_type>(value));
    }
    return data;
}

constexpr const char* paths[] = {"A", "B", "C", "D", "E", "F"};

} // namespace

/// A view of any kind.
struct Place
{
    std::unique_ptr<GLLayout> widget;
    QPointer<QWidget> watched; // which is null once the widget is destroyed
    std::unique_ptr<QWidget> page;

    template<class Action>
    void with(const Action& action) const
    {
        if (auto* time = dynamic_cast<VCGLTimeDiagram*>(widget.get()))
            action(*time);
        else if (auto* eye = dynamic_cast<VCGLEyeDiagram*>(widget.get()))
            action(*eye);
        else if (auto* iq = dynamic_cast<VCGLIQDiagram*>(widget.get()))
            action(*iq);
    }
};

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

    template<class View>
    void create(Place& place, std::uint8_t host)
    {
        place.page.reset();
        place.widget.reset();
        place.widget = std::make_unique<View>(host % 2 ? &window : nullptr);
        place.watched = place.widget.get();
    }
    void createValue(std::uint8_t path, std::uint8_t type);
    template<class View>
    void bind(View& view, std::uint8_t role, const char* path);
    template<class View>
    void give(View& view, std::uint8_t length, std::uint8_t content);
    template<class View>
    void page(Place& place, View& view, std::uint8_t first, std::uint8_t second);
    template<class View>
    void axes(View& view, std::uint8_t first, std::uint8_t second);
    template<class View>
    void paint(View& view, std::uint8_t first, std::uint8_t second);
    template<class View>
    void point(View& view, std::uint8_t first, std::uint8_t second);
    template<class View>
    void texts(View& view, std::uint8_t first, std::uint8_t second);
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

void World::Private::createValue(std::uint8_t path, std::uint8_t type)
{
    const QString name = pick(paths, path);
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

template<class View>
void World::Private::bind(View& view, std::uint8_t role, const char* path)
{
    constexpr bool isIq = std::is_same_v<View, VCGLIQDiagram>;
    switch (role % 8) {
    case 0:
        view.SetData1_ValuePath(path);
        break;
    case 1:
        if constexpr (isIq)
            view.SetData2_ValuePath(path);
        else
            view.SetBaudrateData_ValuePath(path);
        break;
    case 2:
        view.SetHasChangedTrigger_ValuePath(path);
        break;
    case 3:
        view.SetXAxisMin_ValuePath(path);
        break;
    case 4:
        view.SetXAxisMax_ValuePath(path);
        break;
    case 5:
        view.SetYAxisMin_ValuePath(path);
        break;
    case 6:
        view.SetYAxisMax_ValuePath(path);
        break;
    default:
        if constexpr (!isIq)
            view.SetBaudrate_ValuePath(path);
    }
}

template<class View>
void World::Private::give(View& view, std::uint8_t length, std::uint8_t content)
{
    if constexpr (std::is_same_v<View, VCGLIQDiagram>) {
        auto data = nastyData<std::vector<float>>(length, content);
        view.AddData(data);
    } else {
        auto data = nastyData<std::vector<double>>(length, content);
        view.FillData(data, content % 2);
    }
}

template<class View>
void World::Private::page(Place& place, View& view, std::uint8_t first, std::uint8_t second)
{
    auto* diagram = TestAccess::diagram(view);
    if (first % 4 == 0) {
        place.page.reset();
    } else if (first % 4 == 1) {
        place.page = std::make_unique<QWidget>();
        diagram->GetPropertyPage(place.page.get(), "page");
    } else if (first % 4 == 2 && place.page) {
        for (auto* editor : place.page->findChildren<QDoubleSpinBox*>())
            editor->setValue(nastyNumber(second++));
        for (auto* editor : place.page->findChildren<QSpinBox*>())
            editor->setValue(nastyLength(second));
        place.page->findChild<QCheckBox*>()->toggle();
    } else {
        diagram->slotAcceptPropertyChanges();
    }
}

template<class View>
void World::Private::axes(View& view, std::uint8_t first, std::uint8_t second)
{
    auto* diagram = TestAccess::diagram(view);
    const double number = nastyNumber(second);
    const std::shared_ptr<XAxisWidget> xAxis = TestAccess::xAxis(view);
    switch (first % 9) {
    case 0:
        diagram->SetYStart(number);
        break;
    case 1:
        diagram->SetYStop(number);
        break;
    case 2:
        xAxis->SetRange(number, nastyNumber(static_cast<std::uint8_t>(second / 3)));
        break;
    case 3:
        xAxis->ZoomAt(nastyLength(second), number);
        break;
    case 4:
        xAxis->PanFrom(-1.0, number, nastyLength(first), nastyLength(second));
        break;
    case 5:
        xAxis->ResetZoom();
        break;
    case 6:
        diagram->setXAxisWidget(second % 2 ? xAxis : nullptr);
        break;
    case 7:
        if constexpr (!std::is_same_v<View, VCGLIQDiagram>)
            diagram->SetBaudrate(static_cast<float>(second % 2 ? 1.0 : number));
        break;
    default:
        xAxis->XPixelMap()->GetAxisDefinition().SetTickLimit(nastyLength(second));
    }
}

template<class View>
void World::Private::paint(View& view, std::uint8_t first, std::uint8_t second)
{
    constexpr double scales[] = {1.0, 0.5, 2.5, 1e-300, 1e300, 0.0, -1.0};
    ++paintDepth;
    if (first % 2 == 0) {
        view.grab(QRect(0, first % 5, nastyLength(second) % 500, nastyLength(first) % 500));
    } else {
        QImage image(second % 3 * 40, 40, QImage::Format_RGB32);
        QPainter painter(&image);
        if (painter.isActive()) {
            painter.scale(pick(scales, first), pick(scales, second));
            painter.rotate(second % 4 * 45);
        }
        view.RenderPicture(painter, {nastyLength(second) % 2000, 1 + first});
    }
    --paintDepth;
}

template<class View>
void World::Private::point(View& view, std::uint8_t first, std::uint8_t second)
{
    const QPoint at(second % 16 * view.width() / 16, second / 16 * view.height() / 16);
    constexpr QEvent::Type types[] = {QEvent::MouseButtonPress, QEvent::MouseMove,
                                      QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick};
    if (first % 6 < 4) {
        const QEvent::Type type = types[first % 6];
        const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &event);
    } else if (first % 6 == 4) {
        const int delta = first % 4 == 0 ? nastyLength(first) : 120;
        QWheelEvent event(at, view.mapToGlobal(at), {}, {0, delta}, {}, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&view, &event);
    } else {
        QKeyEvent event(QEvent::KeyPress, second % 2 ? Qt::Key_Escape : Qt::Key_Space, {});
        QCoreApplication::sendEvent(view.GetToolbarCaption()->getCaptionWidget(), &event);
    }
}

template<class View>
void World::Private::texts(View& view, std::uint8_t first, std::uint8_t second)
{
    if constexpr (!std::is_same_v<View, VCGLEyeDiagram>) {
        auto* plot = TestAccess::diagram(view);
        const QString text = QString(first, QChar('x')) + QChar('\n') + QChar(first + 256 * second);
        switch (first % 5) {
        case 0:
            plot->AddMarker("m", text, {nastyLength(first), nastyLength(second)});
            break;
        case 1:
            plot->RemoveMarker("m");
            break;
        case 2:
            plot->addTextFreqList(text);
            break;
        case 3:
            plot->clear();
            break;
        default:
            plot->setVisible(second % 2);
        }
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

constexpr const char* operationNames[] = {"create a view",
                                          "destroy a view",
                                          "bind",
                                          "create a value",
                                          "remove a value",
                                          "fill a list",
                                          "trigger",
                                          "set a number",
                                          "give data",
                                          "resize",
                                          "show or hide",
                                          "paint",
                                          "use a page",
                                          "pause",
                                          "set the language",
                                          "move to a parent",
                                          "scale",
                                          "set an axis",
                                          "point",
                                          "arm an observer",
                                          "process events",
                                          "open a dialog",
                                          "set colours",
                                          "change texts",
                                          "look at a stray value"};
constexpr std::size_t operationCount = std::size(operationNames);

} // namespace

std::string World::name(const Step& step)
{
    return std::string(operationNames[step.operation % operationCount]) + " " +
           std::to_string(step.object % 3) + " (" + std::to_string(step.object) + ", " +
           std::to_string(step.first) + ", " + std::to_string(step.second) + ")";
}

void World::Private::perform(const Step& step)
{
    const std::uint8_t first = step.first, second = step.second;
    Place& place = places[step.object % places.size()];
    const char* const path = pick(paths, first);
    values::ValueBase* const value = tree.FindValue(path);
    // A step inside of a paint or of a step on the same view may end what that one works on only
    // where the class says so: in notifications and dialogs.
    switch (step.operation % operationCount) {
    case 0:
        if (isPainting())
            break;
        if (first % 3 == 0)
            create<VCGLTimeDiagram>(place, second);
        else if (first % 3 == 1)
            create<VCGLEyeDiagram>(place, second);
        else
            create<VCGLIQDiagram>(place, second);
        break;
    case 1:
        if (!isPainting())
            place.widget.reset();
        break;
    case 2:
        place.with([&](auto& view) { bind(view, second, path); });
        break;
    case 3:
        createValue(first, second);
        break;
    case 4:
        tree.Remove(path);
        break;
    case 5:
        if (auto* list = dynamic_cast<values::ValueList<double>*>(value))
            list->GetList() = nastyData<std::list<double>>(step.object, second);
        break;
    case 6:
        if (auto* trigger = dynamic_cast<values::Value<bool>*>(value))
            trigger->SetValue(second % 2);
        break;
    case 7:
        if (auto* number = dynamic_cast<values::ValueNumeric<double>*>(value))
            number->SetValue(nastyNumber(second));
        break;
    case 8:
        place.with([&](auto& view) { give(view, first, second); });
        break;
    case 9:
        if (place.widget && !isPainting())
            place.widget->resize(std::min(nastyLength(first), 8192),
                                 std::min(nastyLength(second), 8192) / (first % 2 ? 64 : 1));
        break;
    case 10:
        if (place.widget && !isPainting()) {
            place.widget->setVisible(first % 2);
            window.setVisible(first % 4);
        }
        break;
    case 11:
        if (!isPainting() && depth == 1)
            place.with([&](auto& view) { paint(view, first, second); });
        break;
    case 12:
        place.with([&](auto& view) { page(place, view, first, second); });
        break;
    case 13:
        place.with([&](auto& view) { view.GetToolbarCaption()->setPaused(first % 2); });
        break;
    case 14:
        TranslationCenter::Instance().SetLanguage(first % 2 ? "de" : "");
        break;
    case 15:
        if (place.widget && !isPainting())
            place.widget->setParent(first % 2 ? &window : nullptr);
        break;
    case 16:
        place.with([](auto& view) { view.AutoScale(); });
        break;
    case 17:
        place.with([&](auto& view) { axes(view, first, second); });
        break;
    case 18:
        if (!isPainting())
            place.with([&](auto& view) { point(view, first, second); });
        break;
    case 19:
        observer.armed = 1 + first % 3;
        place.with([&](auto& view) {
            TestAccess::xAxis(view)->Attach(&observer);
            if constexpr (!std::is_same_v<decltype(view), VCGLEyeDiagram&>)
                TestAccess::diagram(view)->GetYAxisHandler()->Attach(&observer);
        });
        break;
    case 20:
        if (!isPainting())
            QCoreApplication::processEvents();
        break;
    case 21:
        if (!isPainting())
            inDialog(place, first, second % 6);
        break;
    case 22:
        ColorSet::Instance().SetScheme(static_cast<ColorSet::Scheme>(first % 2));
        break;
    case 23:
        place.with([&](auto& view) { texts(view, first, second); });
        break;
    default: {
        values::ValueObservingPtr<values::Value<bool>> pointer(&observer);
        values::Value<bool> stray("stray");
        pointer.Reset(&stray);
        pointer.NotifyOwner();
    }
    }
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
