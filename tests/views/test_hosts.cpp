// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// What a view offers to the application around it.
#include "ViewsFixture.h"
#include "glwidgets/TextRecorder.h"
#include "platform/glbase/axisDefinition.h"
#include "platform/gui/ColorSet.h"
#include "platform/values/Binding.h"

#include <QMenu>
#include <QSignalSpy>

#include <algorithm>
#include <cmath>
#include <thread>

namespace {

using EyeView = Views<VCGLEyeDiagram>;
using IqView = Views<VCGLIQDiagram>;

template<class View>
struct Hosts : Views<View>
{
    bool saysInPicture(const QString& text)
    {
        TextRecorder recorder(this->view->size());
        QPainter painter(&recorder);
        this->view->RenderPicture(painter, recorder.QImage::size());
        return std::any_of(recorder.texts.begin(), recorder.texts.end(),
                           [&](const auto& drawn) { return drawn.text == text; });
    }
};
TYPED_TEST_SUITE(Hosts, AllViews, );

TYPED_TEST(Hosts, ReachAllPartsByTheView)
{
    auto& view = *this->view;
    this->show();
    const QRect larger = view.GetPlotRect(QSize(700, 500));
    EXPECT_EQ(view.GetPlotRect(view.size()), view.GetPlotRect());
    view.resize(700, 500);
    EXPECT_EQ(view.GetPlotRect(), larger);
    EXPECT_EQ(view.GetPlotRect(QSize(9, 9)).height(), 0);
    EXPECT_EQ(view.GetCanvas() == &view, !this->isEye);
    EXPECT_EQ(view.GetCanvas()->size(), this->isEye ? larger.size() : view.size());
    EXPECT_EQ(view.GetDiagramMenu()->actions().size(), 2);

    view.SetXAxisRange(-3.0, 4.0);
    EXPECT_EQ(view.GetXAxisRange(), std::pair(-3.0, 4.0));
    view.SetYAxisRange(-2.0, 5.0);
    EXPECT_EQ(view.GetYAxisRange(), std::pair(-2.0, 5.0));
    EXPECT_EQ(view.GetXAxisDefinition().GetStop(), 4.0);

    const QString note = QStringLiteral("one, two and three");
    view.SetCaptionNote(note);
    EXPECT_TRUE(this->saysInPicture(note));
    EXPECT_TRUE(this->caption()->toolTip().isEmpty());
    view.resize(150, 300);
    EXPECT_EQ(this->caption()->toolTip(), note); // is cut
    view.SetCaptionNote(note + QChar(0x9c) + "1");
    EXPECT_TRUE(this->saysInPicture("1"));
    EXPECT_EQ(this->caption()->toolTip(), note);
    view.resize(700, 500);
    this->caption()->setReadout("read-out");
    EXPECT_TRUE(this->saysInPicture("read-out") && !this->saysInPicture(note));

    QSignalSpy paused(&view, SIGNAL(StopButtonPressedForStart()));
    view.SetPaused(true);
    view.SetPaused(true);
    EXPECT_TRUE(view.IsPaused());
    EXPECT_EQ(paused.count(), 1);
}

/// Warnings in the log, for as long as it lives.
struct Log
{
    Log()
    {
        texts.clear();
        qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext& context, const QString& text) {
                texts += QString::fromLatin1(context.category) + ' ' + text;
            });
    }
    ~Log() { qInstallMessageHandler(nullptr); }
    static inline QStringList texts;
};

TYPED_TEST(Hosts, BindValuesThatComeLateAndAreWarnedOfThoseWithTwoRoles)
{
    auto& view = *this->view;
    this->tree.Remove("A");
    values::Binding late(view, &TypeParam::SetYAxisMin_ValuePath, "A");
    EXPECT_FALSE(late.isBound());
    this->a = this->tree.template Create<values::ValueNumeric<double>>("A");
    EXPECT_TRUE(late.isBound());
    this->a->SetValue(-3.0);
    EXPECT_EQ(view.GetYAxisRange().first, -3.0);
    delete this->a; // as nobody should
    EXPECT_FALSE(late.isBound());
    this->a = this->tree.template Create<values::ValueNumeric<double>>("A");
    EXPECT_EQ(view.GetYAxisRange().first, 0.0);

    const Log log;
    view.setObjectName("left");
    view.SetXAxisMax_ValuePath("B");
    view.SetYAxisMax_ValuePath("A");
    EXPECT_EQ(log.texts.size(), 1);
    view.SetXAxisMin_ValuePath("A");
    view.SetXAxisMin_ValuePath("A");
    ASSERT_EQ(log.texts.size(), 2);
    for (const char* part :
         {"orvane.views", "left", "\"A\"", "start of X and start of Y and stop of Y"})
        EXPECT_TRUE(log.texts.last().contains(QLatin1String(part))) << qPrintable(log.texts.last());
}

TYPED_TEST(Hosts, AreToldOnceOfUseInAnotherThread)
{
    this->view->setObjectName("wrong thread");
    const Log log;
    std::thread([this] {
        for (int k = 0; k < 2; ++k) {
            this->trigger->SetValue(true);
            this->view->SetData1_ValuePath("Data");
        }
    }).join();
#ifdef NDEBUG
    EXPECT_TRUE(log.texts.isEmpty());
#else
    EXPECT_EQ(log.texts.filter("wrong thread").size(), 1);
    EXPECT_LE(log.texts.filter("\"Trigger\"").size(), 1); // of one of all views
    EXPECT_TRUE(log.texts.first().startsWith("orvane.threads"));
#endif
}

TEST_F(EyeView, KeepsAsManySamplesAsTheHostSays)
{
    view->SetBufferSize(6); // a trace takes one more than it has samples
    view->SetBufferSize(0); // ignored
    for (const double level : {1.0, 2.0, 3.0})
        give({level, level});
    const auto traces = view->GetTraces();
    ASSERT_EQ(traces.size(), 2U);
    EXPECT_EQ(traces.front().front(), QPointF(0.0, 2.0));
}

TEST_F(IqView, KeepsPointsAsLongAsTheHostSays)
{
    view->SetAgesByData(true);
    view->SetAging(0.02);
    view->SetAging(std::nan("")); // ignored
    show();
    give({1});
    QTest::qWait(30);
    give({2});
    paintsBy([this] { view->update(); });
    EXPECT_EQ(view->GetSamples(), (std::vector<float>{2, 2}));
}

TEST_F(IqView, KeepsTheScaleOfIToQInPicturesOfAnyShape)
{
    show();
    view->SetXAxisRange(-2.0, 2.0);
    view->SetYAxisRange(-1.0, 1.0);
    give({0.5});
    const QRect shown = view->GetPlotRect();
    const double scale = double(shown.width()) / shown.height() * 2.0 / 4.0;
    for (const QSize size : {QSize(900, 300), QSize(300, 900), view->size()}) {
        QImage picture(size, QImage::Format_RGB32);
        QPainter painter(&picture);
        view->RenderInProportion(painter, size);
        const QRect plot = view->GetPlotRect(size);
        QPoint lit;
        for (int x = plot.left(); x <= plot.right(); ++x)
            for (int y = plot.top(); y <= plot.bottom(); ++y)
                if (picture.pixelColor(x, y) == ColorSet::Instance()[IColorBase::colIQPoint])
                    lit = QPoint(x, y);
        ASSERT_FALSE(lit.isNull());
        const QPointF fromMiddle = lit + QPointF(0.5, 0.5) - QRectF(plot).center();
        EXPECT_NEAR(fromMiddle.x() / -fromMiddle.y(), scale, scale * 2.0 / -fromMiddle.y());
        EXPECT_EQ(view->GetXAxisRange(), std::pair(-2.0, 2.0));
        EXPECT_EQ(view->GetYAxisRange(), std::pair(-1.0, 1.0));
    }
}

} // namespace
