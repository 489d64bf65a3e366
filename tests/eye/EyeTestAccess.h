// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "eye/GLEyeDiagram.h"
#include "platform/chart/CChartDisplay.h"
#include "platform/chart/CDataArrayD.h"
#include "views/VCGLEyeDiagram.h"

#include <QImage>
#include <QPainter>

#include <vector>

struct TestAccess
{
    using Record = GLEyeDiagram::ValueRecord;
    static const std::vector<Record*>& records(GLEyeDiagram& d) { return d.m_records; }
    static QTimer& timer(GLEyeDiagram& d) { return d.m_autoScaleTimer; }
    static bool pending(GLEyeDiagram& d) { return d.m_autoScalePending; }
    static GLOrvanePropertyPage* page(GLEyeDiagram& d) { return d.m_pPropertyPage; }
    static bool& showGrid(GLEyeDiagram& d) { return d.m_showGrid; }
    template<class T>
    static T& object(GLEyeDiagram& d, const char* name)
    {
        return *OndoChartDisplay::CSmartPtr<T>(d.m_pChartDisplay->FindBaseObject(name));
    }
    static std::vector<double> values(GLEyeDiagram& d, const char* name)
    {
        return object<OndoChartDisplay::CDataArrayD>(d, name).Values();
    }
    static GLEyeDiagram& diagram(VCGLEyeDiagram& v) { return *v.m_pEyeDiagram; }
    static XAxisWidget& xAxis(VCGLEyeDiagram& v) { return *v.m_xAxis; }
};

inline QImage picture(QWidget& widget, double ratio = 1.0)
{
    QImage image(widget.size() * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    widget.render(&painter, {}, {}, QWidget::RenderFlags());
    return image;
}
