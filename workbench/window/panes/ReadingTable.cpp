// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/ReadingTable.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int sideMargin = 8;
constexpr int gateMargin = 4;
const QString unknown = QStringLiteral("\u2013");

/// Sets a tool tip; the same one again would still be told to all who watch the label.
void setTip(QWidget& label, const QString& text)
{
    if (label.toolTip() != text)
        label.setToolTip(text);
}

} // namespace

ReadingTable::ReadingTable(QWidget* parent)
    : QWidget(parent)
    , m_scroll(new QScrollArea(this))
    , m_gate(new QLabel(this))
    , m_grid(new QGridLayout)
{
    auto* content = new QWidget;
    content->setLayout(m_grid);
    m_grid->setContentsMargins(sideMargin, 4, sideMargin, 2);
    m_grid->setHorizontalSpacing(6);
    m_grid->setVerticalSpacing(1);
    content->installEventFilter(this);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus); // its text is only read
    m_scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setWidget(content);
    m_scroll->setWidgetResizable(true);
    m_gate->setForegroundRole(QPalette::PlaceholderText);
    m_gate->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_gate->setContentsMargins(sideMargin, 0, sideMargin, gateMargin);
    m_gate->setWordWrap(true);
    setSizePolicy(QSizePolicy::Ignored,
                  QSizePolicy::Fixed); // the width of a view does not depend on the table
}

/// Sets the height of all lines at the present width, with a scroll bar if the values need one.
QSize ReadingTable::sizeHint() const
{
    const QSize content = m_scroll->widget()->sizeHint();
    const bool isCut = m_scroll->widget()->minimumSizeHint().width() > width();
    const int bar = isCut ? m_scroll->horizontalScrollBar()->sizeHint().height() : 0;
    const int line = fontMetrics().height() + gateMargin; // also while it is empty
    return {content.width(),
            content.height() + bar + std::max(m_gate->heightForWidth(width()), line)};
}

void ReadingTable::fit()
{
    const int below =
        std::max(m_gate->heightForWidth(width()), fontMetrics().height() + gateMargin);
    m_scroll->setGeometry(0, 0, width(), height() - below);
    m_gate->setGeometry(0, height() - below, width(), below);
    if (sizeHint().height() != height())
        updateGeometry();
}

void ReadingTable::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fit();
}

bool ReadingTable::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest)
        fit();
    if (event->type() == QEvent::Wheel) // it scrolls sideways only
        return QCoreApplication::sendEvent(m_scroll->horizontalScrollBar(), event);
    return QWidget::eventFilter(watched, event);
}

QLabel* ReadingTable::addLabel(const QString& text, int row, int column, int columnCount)
{
    auto* label = new QLabel(text, m_scroll->widget());
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
        QLabel* head = addLabel(names[column], row, column);
        heads.push_back(head);
        head->setToolTip(m_meanings.value(names[column]));
        head->setForegroundRole(QPalette::PlaceholderText);
        head->setMinimumWidth(
            std::max(fontMetrics().horizontalAdvance(longest), head->sizeHint().width()));
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
            name(*value, names[column]);
            value->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
            line.values.push_back(value);
        }
        m_lines.push_back(line);
    }
    return first;
}

void ReadingTable::fitColumn(int column, const QString& longest)
{
    for (int row = 0; row < m_grid->rowCount(); ++row) {
        QLayoutItem* item = m_grid->itemAtPosition(row, column);
        if (item && item->widget())
            item->widget()->setMinimumWidth(std::max(fontMetrics().horizontalAdvance(longest),
                                                     item->widget()->sizeHint().width()));
    }
}

void ReadingTable::show(std::size_t line, std::size_t column, const QString& text,
                        const QString& why)
{
    QLabel* label = m_lines.at(line).values.at(column);
    label->setText(text.isEmpty() ? unknown : text);
    QStringList lines{m_meanings.value(label->accessibleName()), text.isEmpty() ? why : QString()};
    lines.removeAll(QString());
    setTip(*label, lines.join(QLatin1Char('\n')));
}

/// Ties a value to its name.
void ReadingTable::name(QLabel& value, const QString& name)
{
    value.setAccessibleName(name);
    setTip(value, m_meanings.value(name));
}

void ReadingTable::setGate(const QString& text, const QString& explanation)
{
    m_gate->setText(text);
    setTip(*m_gate, explanation);
    fit();
}

QString ReadingTable::gate() const { return m_gate->text(); }

void ReadingTable::rename(std::size_t line, const QStringList& names)
{
    const Line& here = m_lines.at(line);
    for (std::size_t column = 0; column < here.heads.size(); ++column) {
        const int index = static_cast<int>(column);
        const QString text = names.value(index, here.usual[index]);
        here.heads[column]->setText(text);
        setTip(*here.heads[column], m_meanings.value(text));
        name(*here.values[column], text);
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
        const QString text = names.value(static_cast<int>(column));
        label->setText(names.isEmpty() ? unknown : text);
        label->setToolTip(m_meanings.value(text));
        label->setForegroundRole(names.isEmpty() ? QPalette::WindowText
                                                 : QPalette::PlaceholderText);
        name(*m_lines.at(line + 1).values[column],
             names.isEmpty() ? label->accessibleName() : text);
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

QStringList ReadingTable::texts() const
{
    QStringList texts;
    for (std::size_t line = 0; line < m_lines.size(); ++line) {
        for (const QLabel* value : m_lines[line].values) {
            const bool isName = !m_lines[line].names.isEmpty();
            if (!value->isHidden() && !isName && !value->text().trimmed().isEmpty() &&
                value->text() != unknown)
                texts += value->accessibleName() + QLatin1Char(' ') + value->text();
        }
    }
    return texts;
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
