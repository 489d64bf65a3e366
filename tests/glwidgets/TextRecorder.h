// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include <vector>

/// A picture that keeps the texts drawn on it and their places instead of pixels. It counts as one
/// of vectors, in which all diagrams draw texts as texts.
struct TextRecorder : QImage, QPaintEngine
{
    struct Text
    {
        QString text;
        QRectF box;
        QColor color;
        double pointSize;
    };

    explicit TextRecorder(const QSize& size)
        : QImage(size, Format_RGB32)
        , QPaintEngine(AllFeatures)
    {}
    QPaintEngine* paintEngine() const override { return const_cast<TextRecorder*>(this); }
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return SVG; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawImage(const QRectF&, const QImage&, const QRectF&, Qt::ImageConversionFlags) override
    {}
    void drawPath(const QPainterPath&) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}
    void drawTextItem(const QPointF& at, const QTextItem& item) override
    {
        const QRectF box(at.x(), at.y() - item.ascent(), item.width(),
                         item.ascent() + item.descent());
        texts.push_back({item.text(), painter()->deviceTransform().mapRect(box),
                         painter()->pen().color(), item.font().pointSizeF()});
    }

    std::vector<Text> texts;
};
