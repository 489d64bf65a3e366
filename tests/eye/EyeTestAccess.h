// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "eye/GLEyeDiagram.h"
#include "platform/chart/CChartDisplay.h"
#include "platform/chart/CDataArrayD.h"
#include "platform/chart/CGraphicEngineSwitch.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "platform/gui/ColorSet.h"

#include <QImage>
#include <QPainter>

#include <memory>
#include <vector>

struct TestAccess
{
    using Record = GLEyeDiagram::ValueRecord;
    static const std::vector<Record*>& records(GLEyeDiagram& d) { return d.m_records; }
    static QTimer& timer(GLEyeDiagram& d) { return d.m_autoScaleTimer; }
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
    static QImage paintedAfresh(GLEyeDiagram& d, double ratio);
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

/// What an engine paints that has not painted before.
inline QImage TestAccess::paintedAfresh(GLEyeDiagram& d, double ratio)
{
    using namespace OndoChartDisplayComfort;
    CGraphicEngineSwitch other(d.m_pChartDisplay, &d, geRaster, true, false);
    CGraphicEngineSwitch* const own = d.m_pEngineSwitch;
    d.m_pEngineSwitch = &other;
    const QImage image = picture(d, ratio);
    d.m_pEngineSwitch = own;
    return image;
}

inline QRgb colorOf(IColorBase::ECOLOR number) { return ColorSet::Instance()[number].rgb(); }

inline int count(const QImage& image, IColorBase::ECOLOR number)
{
    int result = 0;
    for (int row = 0; row < image.height(); ++row) {
        for (int column = 0; column < image.width(); ++column)
            result += image.pixel(column, row) == colorOf(number);
    }
    return result;
}

struct EyeFixture
{
    ~EyeFixture() { TestAccess::showGrid(*eye) = true; } // persists when it is destroyed
    void attach(int width, int height)
    {
        eye->resize(width, height);
        xAxis->SetLength(width);
        eye->setXAxisWidget(xAxis);
    }
    template<class T>
    T& object(const char* name)
    {
        return TestAccess::object<T>(*eye, name);
    }

    std::unique_ptr<GLEyeDiagram> eye = std::make_unique<GLEyeDiagram>(nullptr);
    std::shared_ptr<XAxisWidget> xAxis = std::make_shared<XAxisWidget>("XAxis", nullptr);
};
