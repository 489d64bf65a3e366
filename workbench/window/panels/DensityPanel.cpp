// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panels/DensityPanel.h"

#include "workbench/player/Figures.h"
#include "workbench/window/density/MaskChoice.h"
#include "workbench/window/density/WayBack.h"
#include "workbench/window/panels/CurveView.h"
#include "workbench/window/panels/PanelForm.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t barCount = 64;
constexpr int bathtubSteps = 200;    // of a symbol
constexpr double lowestRate = -15.0; // of the bathtub, as a logarithm
constexpr int listLines = 6;

/// How often values lie where.
QPolygonF histogram(const std::vector<double>& values, double factor)
{
    if (values.size() < 2)
        return {};
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    const double first = *low, width = (*high - *low) / static_cast<double>(barCount);
    if (!(width > 0.0))
        return {};
    std::vector<double> counts(barCount, 0.0);
    for (const double value : values)
        counts[std::min(static_cast<std::size_t>((value - first) / width), barCount - 1)] += 1.0;
    QPolygonF bars;
    for (std::size_t k = 0; k <= barCount; ++k)
        bars << QPointF(factor * (first + static_cast<double>(k) * width),
                        k < barCount ? counts[k] : 0.0);
    return bars;
}

QLabel* addText(QFormLayout& form)
{
    auto* text = new QLabel(form.parentWidget());
    text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    form.addRow(text);
    return text;
}

QString joined(const std::vector<std::pair<QString, QString>>& lines)
{
    QStringList texts;
    for (const auto& [name, text] : lines)
        texts += QStringLiteral("%1: %2").arg(name, text);
    return texts.join(QLatin1Char('\n'));
}

} // namespace

DensityPanel::DensityPanel(QWidget* parent)
    : QWidget(parent)
{
    auto* sections = new QVBoxLayout(this);
    sections->setContentsMargins(14, 10, 6, 10);
    sections->setSpacing(18);
    addMask();
    addWay();
    const auto addCurve = [this](const QString& title) {
        auto* view = new CurveView(title, this);
        panelForm::addSection(*this, title)->addRow(view);
        return view;
    };
    m_bathtub = addCurve(tr("Bathtub: error rate over the instant"));
    m_levels = addCurve(tr("Levels at the instant of decision"));
    m_crossings = addCurve(tr("Crossings between the levels"));
    m_figures = addText(*panelForm::addSection(*this, tr("Figures of the eye")));
    m_errors = addText(*panelForm::addSection(*this, tr("Figures of the constellation")));
    sections->addStretch();
    show(nullptr, DensityReadings(), std::nullopt);
    showErrors({}, DensityReadings());
}

void DensityPanel::addMask()
{
    QFormLayout* form = panelForm::addSection(*this, tr("Mask"));
    m_mask = addText(*form);
    m_margin = new QDoubleSpinBox(this);
    m_margin->setRange(-1.0, 1.0);
    m_margin->setDecimals(3);
    m_margin->setSingleStep(0.01);
    m_margin->setKeyboardTracking(false);
    m_margin->setToolTip(tr("By which each polygon grows to all sides, in symbols and in the "
                            "distance from the lowest level to the highest"));
    panelForm::addControl(*form, tr("Margin"), m_margin);
    m_verdict = addText(*form);
    connect(m_margin, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &DensityPanel::choose);
}

void DensityPanel::addWay()
{
    QFormLayout* form = panelForm::addSection(*this, tr("What passed there"));
    m_what = addText(*form);
    m_stretches = new QListWidget(this);
    m_stretches->setAccessibleName(tr("What passed there"));
    m_stretches->setUniformItemSizes(true);
    m_stretches->setFixedHeight(listLines * fontMetrics().lineSpacing());
    form->addRow(m_stretches);
    connect(m_stretches, &QListWidget::currentRowChanged, this, &DensityPanel::choose);
}

void DensityPanel::choose() { emit chosen({m_margin->value(), m_stretches->currentRow()}); }

void DensityPanel::show(const MaskChoice& masks)
{
    const auto& mask = masks.mask();
    QStringList texts{tr("None: choose one in the menu Density, Mask")};
    if (mask) // in lines that need not be broken: the layout would cut them
        texts = QStringList{mask->name.isEmpty() ? tr("Drawn by hand") : mask->name} +
                mask->source.split(QStringLiteral("; "));
    texts.removeAll(QString());
    m_mask->setText(texts.join(QLatin1Char('\n')));
    const QSignalBlocker quiet(m_margin);
    m_margin->setEnabled(mask.has_value());
    m_margin->setValue(mask ? mask->margin : 0.0);
    m_verdict->setText(masks.text());
    m_verdict->setVisible(mask.has_value());
}

void DensityPanel::show(const WayBack& way)
{
    m_what->setText(way.what().isEmpty() ? tr("Click in a density to see what passed there")
                                         : way.text());
    const QSignalBlocker quiet(m_stretches);
    const auto count = static_cast<int>(way.stretches().size());
    const bool isOther =
        m_stretches->count() != count ||
        (count > 0 && m_stretches->item(0)->data(Qt::UserRole) != way.stretches()[0].symbol);
    if (isOther) {
        m_stretches->clear();
        for (const WayBack::Stretch& stretch : way.stretches()) {
            auto* item =
                new QListWidgetItem(tr("symbol %1 at %2 s")
                                        .arg(QLocale(QLocale::English).toString(stretch.symbol))
                                        .arg(stretch.time, 0, 'f', 6),
                                    m_stretches);
            item->setData(Qt::UserRole, stretch.symbol);
        }
    }
    m_stretches->setEnabled(count > 0);
    m_stretches->setCurrentRow(way.index());
}

void DensityPanel::showCurves(const EyeFiguredPtr& figured, std::optional<double> symbolSeconds)
{
    CurveView::Content levels, crossings, bathtub;
    levels.areBars = crossings.areBars = bathtub.isLogarithm = true;
    levels.xName = tr("level");
    bathtub.lowest = lowestRate;
    const double scale = symbolSeconds ? 1e6 * *symbolSeconds : 1.0;
    crossings.xName = bathtub.xName = symbolSeconds ? tr("µs from the middle of the traces")
                                                    : tr("symbols from the middle of the traces");
    levels.missing = crossings.missing = bathtub.missing = tr("no symbols yet");
    if (figured) {
        const density::EyeFigures& figures = figured->figures;
        levels.curves = {histogram(figured->levels, 1.0)};
        QString why = density::textOf(figures.reason);
        for (std::size_t eye = 0; eye < figures.eyes.size(); ++eye) {
            crossings.curves.push_back(histogram(figured->crossings[eye], scale));
            if (!figures.eyes[eye].totalJitter.isGiven())
                why = density::textOf(figures.eyes[eye].totalJitter.reason);
            QPolygonF curve;
            for (int k = -bathtubSteps / 2; k <= bathtubSteps / 2; ++k) {
                const double time = figures.instant + static_cast<double>(k) / bathtubSteps;
                const double rate = figures.errorRateAt(eye, time);
                curve << QPointF(scale * time, rate > 0.0
                                                   ? std::max(std::log10(rate), lowestRate - 1.0)
                                               : rate == 0.0 ? lowestRate - 1.0
                                                             : HUGE_VAL);
            }
            bathtub.curves.push_back(curve);
        }
        levels.missing = crossings.missing = bathtub.missing = why;
    }
    m_levels->show(levels);
    m_crossings->show(crossings);
    m_bathtub->show(bathtub);
}

void DensityPanel::show(const EyeFiguredPtr& figured, const DensityReadings& readings,
                        std::optional<double> symbolSeconds)
{
    showCurves(figured, symbolSeconds);
    QString text = figured ? joined(readings.lines(*figured)) : QString();
    if (figured && text.isEmpty())
        text = density::textOf(figured->figures.reason);
    if (figured)
        text += QLatin1Char('\n') +
                DensityReadings::gate(figured->keptCount, figured->allSymbols, figured->leftOut);
    m_figures->setText(text.isEmpty() ? tr("Switch the density of the eye on (D)") : text);
}

void DensityPanel::showErrors(const density::ErrorVectors::Figures& errors,
                              const DensityReadings& readings)
{
    m_errors->setText(errors.evm.count > 0 ? joined(readings.lines(errors))
                                           : tr("Switch the density of the constellation on (D)"));
}
