// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/ReadingTable.h"

#include <QLabel>

#include <algorithm>

namespace {

const QString unknown = QStringLiteral("\u2013");

} // namespace

ReadingTable::ReadingTable(QWidget* parent)
    : QWidget(parent)
    , m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(8, 4, 8, 4);
    m_grid->setHorizontalSpacing(6);
    m_grid->setVerticalSpacing(1);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a view's width is not ours to say
}

std::size_t ReadingTable::addLines(const QStringList& names, int lineCount, const QString& longest)
{
    const std::size_t first = m_lines.size();
    const auto addLabel = [this](const QString& text, int row, int column) {
        auto* label = new QLabel(text, this);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_grid->addWidget(label, row, column);
        return label;
    };
    const int row = m_grid->count() == 0 ? 0 : m_grid->rowCount();
    for (int column = 0; column < names.size(); ++column) {
        QLabel* name = addLabel(names[column], row, column);
        name->setForegroundRole(QPalette::PlaceholderText);
        name->setMinimumWidth(
            std::max(fontMetrics().horizontalAdvance(longest), name->sizeHint().width()));
        m_grid->setColumnStretch(column, 1);
    }
    for (int line = 0; line < lineCount; ++line) {
        m_lines.emplace_back();
        for (int column = 0; column < names.size(); ++column) {
            QLabel* value = addLabel(unknown, row + 1 + line, column);
            value->setAccessibleName(names[column]);
            m_lines.back().push_back(value);
        }
    }
    return first;
}

void ReadingTable::show(std::size_t line, std::size_t column, const QString& text)
{
    m_lines.at(line).at(column)->setText(text.isEmpty() ? unknown : text);
}

QString ReadingTable::text(std::size_t line, std::size_t column) const
{
    return m_lines.at(line).at(column)->text();
}
