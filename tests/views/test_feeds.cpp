// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "ViewsFixture.h"
#include "glwidgets/TextRecorder.h"

#include <QMenu>
#include <QWheelEvent>

#include <cmath>

namespace {

using TimeView = Views<VCGLTimeDiagram>;
using EyeView = Views<VCGLEyeDiagram>;
using IqView = Views<VCGLIQDiagram>;

template<class View>
struct Scaling : Views<View>
{};
TYPED_TEST_SUITE(Scaling, AllViews, );

TYPED_TEST(Scaling, ReplacesTheRangeOnRequestThenWidensItForAPeriod)
{
    auto& diagram = *this->view->GetDiagram();
    QTimer& timer = TestAccess::scalingTimer(*this->view);
    EXPECT_TRUE(timer.isSingleShot());
    EXPECT_EQ(timer.interval(), this->isEye ? 2000 : 1000);
    timer.setTimerType(Qt::PreciseTimer);
    const auto expectAfter = [this](const List& samples, float start, float stop) {
        this->give(samples);
        EXPECT_EQ(this->yRange(), std::pair(double(start), double(stop)));
    };
    expectAfter({-5, 5}, -1.0F, 1.0F); // no request
    static_cast<IHasContextMenu&>(diagram)
        .getContextMenu(nullptr, nullptr, 0)
        ->actions()[1]
        ->trigger();
    expectAfter({}, -1.0F, 1.0F); // rejected: the request stands
    struct Follower : IObserver
    {
        void Update(Observable*, TChangeCode) override { seen.push_back(test->yRange()); }
        Scaling<TypeParam>* test = nullptr;
        std::vector<std::pair<double, double>> seen;
    } follower;
    follower.test = this;
    if constexpr (!TestFixture::isEye)
        diagram.GetYAxisHandler()->Attach(&follower);
    expectAfter({-1, 1}, -1.1F, 1.1F);
    if constexpr (!TestFixture::isEye) { // the start first
        diagram.GetYAxisHandler()->Detach(&follower);
        ASSERT_EQ(follower.seen.size(), 2U);
        EXPECT_EQ(follower.seen[0], std::pair(double(-1.1F), 1.0));
    }
    expectAfter({0, 3}, -1.1F, 3.15F);
    diagram.SetYStart(-0.7); // is rounded to single precision, too
    QTest::qWait(30);
    this->view->AutoScale(); // neither starts again nor replaces
    EXPECT_LE(timer.remainingTime(), timer.interval() - 30);
    expectAfter({0, 1}, -0.7F, 3.15F);
    timer.stop(); // as if the period were over
    expectAfter({-9, 9}, -0.7F, 3.15F);
    this->view->AutoScale();
    timer.stop(); // the request outlives the period
    expectAfter({0, 20}, -1.0F, 21.0F);
    expectAfter({0, 40}, -1.0F, 21.0F);
}

TEST_F(TimeView, CutsTheStreamAtTheMarkers)
{
    using Step = std::tuple<List, List, Traces>; // samples, markers, traces added
    const std::vector<std::vector<Step>> stories{
        {{{1, 2, 3, 4, 5, 6}, {3, 0, 0, 3, 0, 0}, {{1, 2, 3}, {4, 5, 6}}}},
        {{{1, 2}, {4, 0}, {}}, {{3, 4}, {0, 0}, {{1, 2, 3, 4}}}}, // over two notifications
        {{{1, 2, 3}, {}, {}}, {{4}, {1}, {{1, 2, 3}, {4}}}},      // no marker for a while
        // Too long: the marker ends it.
        {{{1, 2, 3}, {2}, {}}, {{4, 5}, {0, 2}, {{1, 2, 3, 4}}}, {{6}, {}, {{5, 6}}}},
        // Zero as float is zero; anything else counts.
        {{{1, 2}, {1e-50, std::nan("")}, {{1}}}, {{3}, {-3}, {{2}}}, {{4}, {1}, {{3}, {4}}}},
        {{{1}, {1, 1, 1}, {{1}}}, {{}, {5, 5}, {}}, {{2}, {}, {{2}}}}, // markers beyond the samples
    };
    for (const auto& story : stories) {
        view = std::make_unique<VCGLTimeDiagram>();
        data->GetList().clear();
        bindData();
        Traces expected;
        for (const auto& [samples, marks, added] : story) {
            feed(samples, marks);
            expected.insert(expected.end(), added.begin(), added.end());
            EXPECT_EQ(TestAccess::traces(*view), expected);
        }
    }
    // Later, the diagram hands old samples back; direct data leave the open segment alone.
    for (double i = 0; i < 105; ++i) {
        feed({i}, {2, 0});
        List direct{9};
        view->FillData(direct, false);
        feed({i}, {});
    }
    EXPECT_EQ(TestAccess::traces(*view).front(), List{9});
    EXPECT_EQ(TestAccess::traces(*view).back(), (List{104, 104}));
}

TEST_F(IqView, JoinsTheListsToPairs)
{
    bindData();
    feed({1, 2, 3}, {4, 5});
    feed({1}, {4, 5, 6});
    feed({}, {9});
    EXPECT_EQ(TestAccess::traces(*view), (Traces{{1, 4, 2, 5, 3, 0}, {1, 4}}));
}

TEST_F(EyeView, LiesOverZeroToOneWhateverIsSet)
{
    a->SetValue(0.0);
    b->SetValue(1.0);
    EXPECT_TRUE(view->SetXAxisMin_ValuePath("A") && view->SetXAxisMax_ValuePath("B"));
    show();
    const auto labels = [this] {
        QStringList texts;
        TextRecorder recorder(view->size());
        QPainter painter(&recorder);
        view->Render(painter); // without the diagram's own paint
        for (const TextRecorder::Text& label : recorder.texts)
            texts << label.text;
        return texts;
    };
    const QStringList before = labels();
    EXPECT_TRUE(before.contains("0.00") && before.contains("1.00"));
    const auto setLimits = [&] {
        a->SetValue(0.35);
        b->SetValue(0.65);
        EXPECT_EQ(xAxis().GetStartValue(), 0.35); // until the next paint
        EXPECT_EQ(labels(), before);
    };
    EXPECT_GT(paintsBy(setLimits), 0);
    EXPECT_EQ(std::pair(xAxis().GetStartValue(), xAxis().GetStopValue()), std::pair(0.0, 1.0));
    const QPoint at = view->Widgets().at(2)->geometry().center();
    QWheelEvent wheel(at, view->mapToGlobal(at), {}, {0, 120}, {}, {}, {}, false);
    QApplication::sendEvent(view.get(), &wheel);
    EXPECT_EQ(xAxis().GetStartValue(), 0.0); // nor until the next paint
    for (const auto& [type, x] :
         {std::pair(QEvent::MouseButtonPress, 0), {QEvent::MouseMove, 50}}) {
        const QPoint place = at + QPoint(x, 0);
        QMouseEvent event(type, place, view->mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                          {});
        QApplication::sendEvent(view.get(), &event);
    }
    EXPECT_EQ(std::pair(xAxis().GetStartValue(), xAxis().GetStopValue()), std::pair(0.0, 1.0));
}

} // namespace
