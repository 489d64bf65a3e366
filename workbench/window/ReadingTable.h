// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGridLayout>
#include <QStringList>
#include <QWidget>

#include <vector>

class QLabel;

/// Names of quantities above their values, in columns that do not move whatever the values are.
class ReadingTable : public QWidget
{
    Q_OBJECT
public:
    explicit ReadingTable(QWidget* parent = nullptr);

    /// Adds names, and below them lines of values, none of which is known yet.
    /// @param longest    usual text of a value, which the columns are made wide enough for.
    /// @return the index of the first line.
    std::size_t addLines(const QStringList& names, int lineCount, const QString& longest);
    /// Shows a value; empty: not known.
    void show(std::size_t line, std::size_t column, const QString& text);
    QString text(std::size_t line, std::size_t column) const;

private:
    QGridLayout* m_grid;
    std::vector<std::vector<QLabel*>> m_lines;
};
