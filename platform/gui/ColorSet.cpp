// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/gui/ColorSet.h"

#include "platform/values/SettingsStore.h"

#include <QApplication>
#include <QCoreApplication>
#include <QWidget>

#include <algorithm>

namespace {

constexpr QRgb UnknownColor = 0xff808080;
constexpr ColorSet::Scheme Schemes[] = {ColorSet::Scheme::Dark, ColorSet::Scheme::Light};

QString schemeKey() { return QStringLiteral("ColorSet/Scheme"); }

QString schemeWord(ColorSet::Scheme scheme)
{
    return scheme == ColorSet::Scheme::Dark ? QStringLiteral("Dark") : QStringLiteral("Light");
}

QString colorKey(ColorSet::Scheme scheme, IColorBase::ECOLOR number)
{
    return QStringLiteral("ColorSet/%1/%2").arg(schemeWord(scheme)).arg(static_cast<int>(number));
}

/// Colours of different models never compare equal, and diagrams do not blend.
QColor opaqueRgb(const QColor& color) { return color.rgb(); }

void repaintEverything()
{
    for (QWidget* widget : QApplication::allWidgets())
        widget->update();
}

} // namespace

ColorSet& ColorSet::Instance()
{
    static auto* const set = new ColorSet; // outlives every library's exit code
    return *set;
}

ColorSet::ColorSet() { Load(); }

ColorSet::~ColorSet() = default;

QColor& ColorSet::operator[](ECOLOR number)
{
    return Used(m_scheme).try_emplace(number, DefaultColor(m_scheme, number)).first->second;
}

void ColorSet::SetScheme(Scheme scheme)
{
    if (m_scheme == scheme)
        return;
    m_scheme = scheme;
    repaintEverything();
}

QColor ColorSet::DefaultColor(Scheme scheme, ECOLOR number)
{
    const auto& entries = Entries();
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [number](const Entry& e) { return e.number == number; });
    if (entry == entries.end())
        return UnknownColor;
    return scheme == Scheme::Dark ? entry->dark : entry->light;
}

const std::vector<ColorSet::Entry>& ColorSet::Entries()
{
    static const char* const time = QT_TRANSLATE_NOOP("ColorSet", "Time diagram");
    static const char* const eye = QT_TRANSLATE_NOOP("ColorSet", "Eye diagram");
    static const char* const iq = QT_TRANSLATE_NOOP("ColorSet", "IQ diagram");
    static const char* const scale = QT_TRANSLATE_NOOP("ColorSet", "Labels and grid");
    static const char* const frame = QT_TRANSLATE_NOOP("ColorSet", "Captions and axes");
    static const char* const traces = QT_TRANSLATE_NOOP("ColorSet", "Traces");
    static const char* const first = QT_TRANSLATE_NOOP("ColorSet", "Background, first colour");
    static const char* const second = QT_TRANSLATE_NOOP("ColorSet", "Background, second colour");
    static const char* const markers = QT_TRANSLATE_NOOP("ColorSet", "Start markers");
    static const char* const points = QT_TRANSLATE_NOOP("ColorSet", "Points");
    static const char* const text = QT_TRANSLATE_NOOP("ColorSet", "Label text");
    static const char* const textBack = QT_TRANSLATE_NOOP("ColorSet", "Ground behind label text");
    static const char* const grid = QT_TRANSLATE_NOOP("ColorSet", "Grid lines");
    static const auto* const entries = new std::vector<Entry>{
        {colTimeTrace, time, traces, 0xff4fa8ff, 0xff1858d6},
        {colTimeMarker, time, markers, 0xffb8862b, 0xffa65e00},
        {colTimeBackground, time, first, 0xff10151c, 0xffffffff},
        {colTimeBackgroundEnd, time, second, 0xff161d27, 0xfff5f8fa},
        {colEyeTrace, eye, traces, 0xff58e6a0, 0xff1f6b3a},
        {colEyeBackground, eye, first, 0xff10151c, 0xffffffff},
        {colEyeBackgroundEnd, eye, second, 0xff161d27, 0xfff5f8fa},
        {colIQPoint, iq, points, 0xffffd166, 0xff7a1f6b},
        {colIQBackground, iq, first, 0xff10151c, 0xffffffff},
        {colIQBackgroundEnd, iq, second, 0xff161d27, 0xfff5f8fa},
        {colLabel, scale, text, 0xffc9d3df, 0xff2f3a46},
        {colLabelBack, scale, textBack, 0xff10151c, 0xffffffff},
        {colGrid, scale, grid, 0xff2e3947, 0xffcbd5df},
        {colBackground, frame, first, 0xff1a222d, 0xffedf1f5},
        {colBackgroundEnd, frame, second, 0xff161d27, 0xfff5f8fa},
    };
    return *entries;
}

void ColorSet::SetColors(Scheme scheme, const std::map<ECOLOR, QColor>& colors)
{
    std::map<ECOLOR, QColor>& used = Used(scheme);
    const std::map<ECOLOR, QColor> before = used;
    for (auto& [number, color] : used)
        color = DefaultColor(scheme, number);
    for (const auto& [number, color] : colors)
        used[number] = color.isValid() ? opaqueRgb(color) : DefaultColor(scheme, number);
    if (used != before)
        repaintEverything();
}

std::map<IColorBase::ECOLOR, QColor> ColorSet::Colors(Scheme scheme) const
{
    return m_colors[static_cast<int>(scheme)]; // Load has put every number in use there
}

void ColorSet::Load()
{
    const QVariantMap stored = values::SettingsStore::Instance().Read();
    for (const Scheme scheme : Schemes) {
        std::map<ECOLOR, QColor> colors;
        for (const Entry& entry : Entries())
            colors[entry.number] = QColor(stored.value(colorKey(scheme, entry.number)).toString());
        SetColors(scheme, colors);
    }
    const bool light = stored.value(schemeKey()).toString() == schemeWord(Scheme::Light);
    SetScheme(light ? Scheme::Light : Scheme::Dark);
}

void ColorSet::Save() const
{
    QVariantMap values{{schemeKey(), schemeWord(m_scheme)}};
    for (const Scheme scheme : Schemes) {
        for (const auto& [number, color] : Colors(scheme)) {
            const bool isDefault = color == DefaultColor(scheme, number);
            values[colorKey(scheme, number)] = isDefault ? QVariant() : QVariant(color.name());
        }
    }
    values::SettingsStore::Instance().Write(values);
}

void ColorSet::slotSetDefaultProperties() {}

void ColorSet::slotRejectPropertyChanges() {}

const QString& ColorSet::GetPropertyPagePath()
{
    m_path = QCoreApplication::translate("ColorSet", "Colours");
    return m_path;
}
