// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/gui/ColorPage.h"

#include "platform/gui/PropertyPagesFrame.h"

#include <QColorDialog>
#include <QComboBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>

#include <utility>

namespace {

constexpr int SwatchSize = 16; // logical pixels
constexpr int RowIndent = 12;

QString colorText(const char* text) { return QCoreApplication::translate("ColorSet", text); }

/// A square of the colour with a border that shows on any ground.
QIcon swatchIcon(const QColor& color, const QWidget& widget)
{
    const qreal ratio = widget.devicePixelRatioF();
    QPixmap pixmap(qRound(SwatchSize * ratio), qRound(SwatchSize * ratio));
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(color);
    QPainter painter(&pixmap);
    painter.setPen(widget.palette().color(QPalette::Mid));
    painter.drawRect(0, 0, SwatchSize - 1, SwatchSize - 1);
    return pixmap;
}

} // namespace

ColorPage::ColorPage(QWidget* parent, const char* name)
    : QWidget(parent)
    , m_pScheme(new QComboBox(this))
{
    setObjectName(QString::fromLatin1(name));
    m_pScheme->addItem(tr("Dark"));
    m_pScheme->addItem(tr("Light"));
    m_pScheme->setCurrentIndex(static_cast<int>(ColorSet::Instance().GetScheme()));
    auto* schemeLabel = new QLabel(tr("&Scheme:"), this);
    schemeLabel->setBuddy(m_pScheme);
    auto* resetAll = new QPushButton(tr("&Reset All"), this);
    resetAll->setAutoDefault(false); // Return is for the dialog's OK

    auto* layout = new QGridLayout(this);
    layout->addWidget(schemeLabel, 0, 0);
    layout->addWidget(m_pScheme, 0, 1);
    layout->setColumnStretch(2, 1);
    layout->addWidget(resetAll, 0, 3);
    layout->addWidget(CreateRows(), 1, 0, 1, 4);
    ShowColors();

    connect(m_pScheme, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ColorPage::ShowColors);
    connect(resetAll, &QPushButton::clicked, this, &ColorPage::ResetAll);
    if (auto* frame = qobject_cast<PropertyPagesFrame*>(window()))
        connect(frame, &PropertyPagesFrame::signalApply, this,
                [] { ColorSet::Instance().slotAcceptPropertyChanges(); });
}

ColorSet::Scheme ColorPage::ShownScheme() const
{
    return static_cast<ColorSet::Scheme>(m_pScheme->currentIndex());
}

std::map<IColorBase::ECOLOR, QColor> ColorPage::TakeEdits(ColorSet::Scheme scheme)
{
    return std::exchange(m_edits[static_cast<int>(scheme)], {});
}

QWidget* ColorPage::CreateRows()
{
    auto* scrollArea = new QScrollArea(this);
    auto* rows = new QWidget(scrollArea);
    auto* grid = new QGridLayout(rows);
    grid->setVerticalSpacing(2);
    grid->setColumnMinimumWidth(0, RowIndent);
    grid->setColumnStretch(1, 1);
    const char* group = nullptr;
    for (const ColorSet::Entry& entry : ColorSet::Entries()) {
        if (entry.group != group) {
            if (group)
                grid->setRowMinimumHeight(grid->rowCount(), RowIndent);
            group = entry.group;
            auto* heading = new QLabel(colorText(group), rows);
            QFont bold = heading->font();
            bold.setBold(true);
            heading->setFont(bold);
            grid->addWidget(heading, grid->rowCount(), 0, 1, 4);
        }
        AddRow(grid, entry);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    scrollArea->setWidget(rows);
    scrollArea->setWidgetResizable(true);
    scrollArea->setFrameShape(QFrame::NoFrame);
    for (QWidget* ground : {scrollArea->viewport(), rows})
        ground->setAutoFillBackground(false); // the rows stand on the tab's own ground
    scrollArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollArea->setMinimumWidth(rows->minimumSizeHint().width() +
                                scrollArea->style()->pixelMetric(QStyle::PM_ScrollBarExtent));
    return scrollArea;
}

void ColorPage::AddRow(QGridLayout* grid, const ColorSet::Entry& entry)
{
    const int line = grid->rowCount();
    const QString name = colorText(entry.name);
    QWidget* rows = grid->parentWidget();
    const Row row{entry.number, tr("%1, %2").arg(colorText(entry.group), name),
                  new QToolButton(rows), new QToolButton(rows)};
    row.swatch->setIconSize(QSize(SwatchSize, SwatchSize));
    row.swatch->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    row.reset->setText(tr("Reset"));
    row.reset->setAccessibleName(tr("Reset %1").arg(row.fullName));
    for (QToolButton* button : {row.swatch, row.reset}) {
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::StrongFocus);
    }
    grid->addWidget(new QLabel(name, rows), line, 1);
    grid->addWidget(row.swatch, line, 2);
    grid->addWidget(row.reset, line, 3);
    m_rows.push_back(row);
    connect(row.swatch, &QToolButton::clicked, this, [this, row] { OpenColorDialog(row); });
    connect(row.reset, &QToolButton::clicked, this, [this, number = entry.number] {
        Edit(number, ColorSet::DefaultColor(ShownScheme(), number));
    });
}

void ColorPage::OpenColorDialog(const Row& row)
{
    auto* dialog = new QColorDialog(ShownColor(row.number), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(row.fullName);
    connect(dialog, &QColorDialog::colorSelected, this,
            [this, number = row.number](const QColor& color) { Edit(number, color); });
    dialog->open();
}

void ColorPage::Edit(IColorBase::ECOLOR number, const QColor& color)
{
    m_edits[m_pScheme->currentIndex()][number] = color.rgb(); // whatever the dialog's colour model
    ShowColors();
}

QColor ColorPage::ShownColor(IColorBase::ECOLOR number) const
{
    const auto& edits = m_edits[m_pScheme->currentIndex()];
    const auto edit = edits.find(number);
    return edit != edits.end() ? edit->second
                               : ColorSet::Instance().Colors(ShownScheme()).at(number);
}

void ColorPage::ShowColors()
{
    for (const Row& row : m_rows) {
        const QColor color = ShownColor(row.number);
        row.swatch->setIcon(swatchIcon(color, *this));
        row.swatch->setText(color.name().toUpper());
        row.swatch->setAccessibleName(tr("%1: %2").arg(row.fullName, row.swatch->text()));
        row.reset->setEnabled(color != ColorSet::DefaultColor(ShownScheme(), row.number));
    }
}

void ColorPage::ResetAll()
{
    for (const Row& row : m_rows)
        m_edits[m_pScheme->currentIndex()][row.number] =
            ColorSet::DefaultColor(ShownScheme(), row.number);
    ShowColors();
}
