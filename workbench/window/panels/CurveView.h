// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPolygonF>
#include <QString>
#include <QWidget>

#include <vector>

/// A small diagram of curves or of the bars of a histogram, with labelled axes. Y is linear, or a
/// logarithm of base 10.
class CurveView : public QWidget
{
    Q_OBJECT
public:
    struct Content
    {
        std::vector<QPolygonF> curves; ///< points in order of x; one that is not finite is a gap
        bool areBars = false;          ///< from 0 to y, up to the x of the next point
        bool isLogarithm = false;      ///< y is the logarithm of the labelled value
        double lowest = 0.0;           ///< of y, where it is a logarithm
        QString xName;                 ///< with its unit
        QString missing;               ///< why there is no curve
    };

    CurveView(const QString& name, QWidget* parent);

    void show(const Content& content);
    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintCurves(QPainter& painter, const QRectF& area, const QRectF& range) const;
    void paintAxes(QPainter& painter, const QRectF& area, const QRectF& range) const;
    QRectF range() const;

    Content m_content;
};
