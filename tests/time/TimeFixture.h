// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/base/IObserver.h"
#include "platform/glbase/GLLayout.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "platform/gui/ColorSet.h"
#include "time/GLTimeDiagram.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>

struct TestAccess
{
    using Record = GLTimeDiagram::ValueRecord;
    static std::vector<Record*>& records(GLTimeDiagram& d) { return d.m_records; }
    static QTimer& timer(GLTimeDiagram& d) { return d.m_autoScaleTimer; }
    static GLOrvanePropertyPage* page(GLTimeDiagram& d) { return d.m_pPropertyPage; }
    static bool& showGrid(GLTimeDiagram& d) { return d.m_showGrid; }
};

using Ranges = std::vector<std::pair<double, double>>;

/// A time diagram in a frame of its own, with an X axis that is not part of the frame. Logs the
/// ranges of the Y axis as they change.
struct TimeFixture : testing::Test, IObserver
{
    static constexpr double nan = NAN, inf = INFINITY;

    TimeFixture()
    {
        ColorSet& colors = ColorSet::Instance(); // of one colour: the pixels of its gradient count
        colors[IColorBase::colTimeBackgroundEnd] = colors[IColorBase::colTimeBackground];
        frame->resize(101, 101);
        frame->AddWidget(diagram);
        diagram->setXAxisWidget(xAxis);
        diagram->SetBaudrate(1.0F);
        TestAccess::showGrid(*diagram) = false;
        xAxis->SetLength(101);
        xAxis->SetRange(-100.0, 0.0);
        diagram->GetYAxisHandler()->Attach(this);
    }
    void Update(Observable*, TChangeCode) override { ranges.push_back(yRange()); }
    std::pair<double, double> yRange()
    {
        std::pair<double, double> range;
        diagram->GetYStartStop(range.first, range.second);
        return range;
    }
    void add(std::vector<double> samples) { diagram->AddData(samples); }
    TestAccess::Record& record(std::size_t index) { return *TestAccess::records(*diagram)[index]; }
    std::size_t kept() { return TestAccess::records(*diagram).size(); }
    QImage paint()
    {
        QImage image(frame->size(), QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        frame->Render(painter);
        return image;
    }
    void expectPixel(int x, int y, IColorBase::ECOLOR color)
    {
        EXPECT_EQ(paint().pixelColor(x, y), ColorSet::Instance()[color]) << x << ", " << y;
    }

    Ranges ranges;
    std::unique_ptr<GLLayout> frame = std::make_unique<GLLayout>();
    std::shared_ptr<GLTimeDiagram> diagram = std::make_shared<GLTimeDiagram>("TimeDiagram");
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);
};
