// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/glbase/GLLayout.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/glwidgets/YAxisHandler.h"
#include "time/GLTimeDiagram.h"

#include <QImage>
#include <QPainter>

#include <memory>
#include <vector>

struct TestAccess
{
    using Record = GLTimeDiagram::ValueRecord;
    static std::vector<Record*>& records(GLTimeDiagram& d) { return d.m_records; }
    static std::vector<Record*>& freeRecords(GLTimeDiagram& d) { return d.m_freeRecords; }
    static QTimer& timer(GLTimeDiagram& d) { return d.m_autoScaleTimer; }
    static bool pending(GLTimeDiagram& d) { return d.m_autoScalePending; }
    static double yStart(GLTimeDiagram& d) { return d.m_yStart; }
    static GLOrvanePropertyPage* page(GLTimeDiagram& d) { return d.m_pPropertyPage; }
    static bool& showGrid(GLTimeDiagram& d) { return d.m_showGrid; }
};

/// A time diagram in a frame of its own, with an X axis that is not part of the frame.
struct TimeFixture
{
    GLLayout frame;
    std::shared_ptr<GLTimeDiagram> diagram = std::make_shared<GLTimeDiagram>("TimeDiagram");
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);

    TimeFixture()
    {
        frame.resize(101, 101);
        frame.AddWidget(diagram);
        diagram->setXAxisWidget(xAxis);
        diagram->SetBaudrate(1.0F);
        xAxis->SetRange(-100.0, 0.0);
    }
    ~TimeFixture() { frame.RemoveWidget(*diagram); }

    void add(std::vector<double> samples) { diagram->AddData(samples); }
    TestAccess::Record& record(std::size_t index) { return *TestAccess::records(*diagram)[index]; }
    QImage paint()
    {
        QImage image(frame.size(), QImage::Format_RGB32);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        frame.Render(painter);
        return image;
    }
};
