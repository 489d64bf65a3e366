// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ReadingTable.h"

#include <QEvent>
#include <QLabel>

#include <algorithm>

namespace {

constexpr int sideMargin = 8;
constexpr int gateMargin = 4;
const QString unknown = QStringLiteral("\u2013");

} // namespace

ReadingTable::ReadingTable(QWidget* parent)
    : QWidget(parent)
    , m_gate(new QLabel(this))
    , m_port(new QWidget(this))
    , m_content(new QWidget(m_port))
    , m_grid(new QGridLayout(m_content))
{
    m_content->installEventFilter(this);
    m_grid->setContentsMargins(sideMargin, 4, sideMargin, 2);
    m_grid->setHorizontalSpacing(6);
    m_grid->setVerticalSpacing(1);
    m_gate->setForegroundRole(QPalette::PlaceholderText);
    m_gate->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_gate->setContentsMargins(sideMargin, 0, sideMargin, 0);
    m_gate->setFixedHeight(fontMetrics().height());
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a view's width is not ours to say
}

QSize ReadingTable::sizeHint() const
{
    return m_content->sizeHint() + QSize(0, m_gate->height() + gateMargin);
}

// A number that is cut off would be read as another one.
void ReadingTable::arrange()
{
    const int above = height() - m_gate->height() - gateMargin;
    m_content->resize(m_content->minimumSizeHint().expandedTo({width(), above}));
    m_grid->activate();
    int right = 0;
    for (int column = 0; column < m_grid->columnCount(); ++column) {
        const int end = m_grid->cellRect(0, column).right() + 1;
        right = end <= width() ? end : right;
    }
    m_port->resize(right, above);
    m_gate->setGeometry(0, above, width(), m_gate->height());
}

void ReadingTable::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

bool ReadingTable::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        arrange();
    }
    return QWidget::eventFilter(watched, event);
}

QLabel* ReadingTable::addLabel(const QString& text, int row, int column, int columnCount)
{
    auto* label = new QLabel(text, this);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_grid->addWidget(label, row, column, 1, columnCount);
    return label;
}

std::size_t ReadingTable::addLines(const QStringList& names, int lineCount, const QString& longest)
{
    const std::size_t first = m_lines.size();
    const int row = m_grid->count() == 0 ? 0 : m_grid->rowCount();
    std::vector<QLabel*> heads;
    for (int column = 0; column < names.size(); ++column) {
        QLabel* name = addLabel(names[column], row, column);
        heads.push_back(name);
        name->setForegroundRole(QPalette::PlaceholderText);
        name->setMinimumWidth(
            std::max(fontMetrics().horizontalAdvance(longest), name->sizeHint().width()));
        m_grid->setColumnStretch(column, 1);
    }
    for (int k = 0; k < lineCount; ++k) {
        Line line;
        line.row = row + 1 + k;
        if (k == 0) {
            line.heads = heads;
            line.usual = names;
        }
        for (int column = 0; column < names.size(); ++column) {
            QLabel* value = addLabel(unknown, line.row, column);
            value->setAccessibleName(names[column]);
            value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
            line.values.push_back(value);
        }
        m_lines.push_back(line);
    }
    return first;
}

void ReadingTable::widen(int column, const QString& longest)
{
    for (int row = 0; row < m_grid->rowCount(); ++row) {
        QLayoutItem* item = m_grid->itemAtPosition(row, column);
        if (item && item->widget())
            item->widget()->setMinimumWidth(fontMetrics().horizontalAdvance(longest));
    }
}

void ReadingTable::show(std::size_t line, std::size_t column, const QString& text,
                        const QString& why)
{
    QLabel* label = m_lines.at(line).values.at(column);
    label->setText(text.isEmpty() ? unknown : text);
    label->setToolTip(text.isEmpty() ? why : QString());
}

void ReadingTable::setGate(const QString& text, const QString& explanation)
{
    m_gate->setText(text);
    m_gate->setToolTip(explanation);
}

QString ReadingTable::gate() const { return m_gate->text(); }

void ReadingTable::rename(std::size_t line, const QStringList& names)
{
    const Line& here = m_lines.at(line);
    for (std::size_t column = 0; column < here.heads.size(); ++column) {
        const int index = static_cast<int>(column);
        const QString name = names.value(index, here.usual[index]);
        here.heads[column]->setText(name);
        here.values[column]->setAccessibleName(name);
    }
}

void ReadingTable::setNames(std::size_t line, const QStringList& names)
{
    Line& here = m_lines.at(line);
    if (here.names == names)
        return;
    here.names = names;
    for (std::size_t column = 0; column < here.values.size(); ++column) {
        QLabel* label = here.values[column];
        const QString name = names.value(static_cast<int>(column));
        label->setText(names.isEmpty() ? unknown : name);
        label->setForegroundRole(names.isEmpty() ? QPalette::WindowText
                                                 : QPalette::PlaceholderText);
        m_lines.at(line + 1).values[column]->setAccessibleName(
            names.isEmpty() ? label->accessibleName() : name);
    }
}

void ReadingTable::setNote(std::size_t line, int columnCount, const QString& text,
                           const QString& explanation)
{
    Line& here = m_lines.at(line);
    if (text == note(line))
        return;
    if (!here.note) {
        here.note = addLabel(QString(), here.row, 0, columnCount);
        here.note->setForegroundRole(QPalette::PlaceholderText);
        here.note->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    here.note->setText(text);
    here.note->setVisible(!text.isEmpty());
    for (int column = 0; column < columnCount; ++column)
        here.values.at(static_cast<std::size_t>(column))->setVisible(text.isEmpty());
    setToolTip(explanation);
}

QString ReadingTable::text(std::size_t line, std::size_t column) const
{
    return m_lines.at(line).values.at(column)->text();
}

QString ReadingTable::note(std::size_t line) const
{
    const QLabel* note = m_lines.at(line).note;
    return note ? note->text() : QString();
}
