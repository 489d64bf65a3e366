// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/Appearance.h"

#include "platform/gui/ColorSet.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QWidget>

namespace {

QColor color(IColorBase::ECOLOR number) { return ColorSet::Instance()[number]; }

/// A colour between two: `part` 0 is the first, 1 the second.
QColor mixed(const QColor& first, const QColor& second, double part)
{
    const auto mix = [part](auto a, auto b) { return decltype(a)(a + (b - a) * part); };
    return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                            mix(first.blueF(), second.blueF()));
}

constexpr int scrollBarWidth = 11; // pixels: the views need the room

class PlainFusion : public QProxyStyle
{
public:
    PlainFusion()
        : QProxyStyle(QStringLiteral("Fusion"))
    {}
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override
    {
        if (metric == PM_MenuPanelWidth)
            return 1;
        if (metric == PM_ScrollBarExtent)
            return scrollBarWidth;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool isChoice = widget && widget->inherits("QComboBoxPrivateContainer");
        if (element == PE_FrameMenu || element == PE_PanelTipLabel || isChoice) {
            // The outlines of Fusion are as dark as a dark ground.
            painter->setPen(appearance::edge());
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
        }
        if (element != PE_IndicatorCheckBox)
            return;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(option->palette.color(QPalette::PlaceholderText));
        painter->drawRoundedRect(QRectF(option->rect).adjusted(1.5, 1.5, -1.5, -1.5), 1.5, 1.5);
        painter->restore();
    }
};

} // namespace

void appearance::setStyle()
{
    auto* style = new PlainFusion;
    style->setParent(qApp);
    QApplication::setStyle(style);
}

QPalette appearance::palette()
{
    const QColor ground = color(IColorBase::colBackground);
    const QColor text = color(IColorBase::colLabel);
    const QColor plot = color(IColorBase::colTimeBackground);
    const QColor accent = color(IColorBase::colTimeTrace);

    QPalette palette(mixed(ground, text, 0.10), ground); // button, window; shades follow
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Base, plot);
    palette.setColor(QPalette::AlternateBase, mixed(plot, ground, 0.5));
    palette.setColor(QPalette::ToolTipBase, mixed(ground, text, 0.08));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, mixed(ground, text, 0.72));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, plot);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::Light, mixed(ground, text, 0.14));
    palette.setColor(QPalette::Midlight, mixed(ground, text, 0.10));
    palette.setColor(QPalette::Mid, mixed(ground, text, 0.18));
    palette.setColor(QPalette::Dark, mixed(ground, Qt::black, 0.25));
    palette.setColor(QPalette::Shadow, mixed(ground, Qt::black, 0.5));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, mixed(ground, text, 0.4));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, mixed(ground, text, 0.25));
    return palette;
}

QColor appearance::edge()
{
    return mixed(color(IColorBase::colBackground), color(IColorBase::colLabel), 0.4);
}

bool appearance::isApplied() { return QApplication::palette() == palette(); }

void appearance::apply(QWidget& window)
{
    QApplication::setPalette(palette());
    const QString line = QApplication::palette().color(QPalette::Midlight).name();
    window.setStyleSheet(
        QStringLiteral("QMainWindow::separator { width: 1px; height: 1px; background: %1; }"
                       "QToolBar { border: 0; border-bottom: 1px solid %1; padding: 3px 6px;"
                       " spacing: 4px; }"
                       "QStatusBar { border-top: 1px solid %1; }"
                       "QStatusBar::item { border: 0; }"
                       "QSplitter::handle { background: %1; }")
            .arg(line));
}
