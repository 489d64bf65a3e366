// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGridLayout>
#include <QMap>
#include <QStringList>
#include <QWidget>

#include <vector>

class QLabel;
class QScrollArea;

/// Names of quantities above their values, in columns that do not move whatever the values are.
/// Where there is no room for all of them, it scrolls sideways.
class ReadingTable : public QWidget
{
    Q_OBJECT
public:
    explicit ReadingTable(QWidget* parent = nullptr);

    /// Sets the meanings of names, shown as tool tips of the names and their values.
    void explain(const QMap<QString, QString>& meanings) { m_meanings = meanings; }
    /// Adds names, and below them lines of values that are not known yet.
    /// @param longest    longest usual text of a value, for the width of the columns.
    /// @return the index of the first line.
    std::size_t addLines(const QStringList& names, int lineCount, const QString& longest);
    /// Makes a column wide enough for another longest text and its head.
    void fitColumn(int column, const QString& longest);
    /// Shows a value; empty: not known.
    /// @param why  reason when it is not known, shown as a tool tip.
    void show(std::size_t line, std::size_t column, const QString& text,
              const QString& why = QString());
    /// Sets the text below all lines, which tells what the values are of; it wraps if needed.
    void setGate(const QString& text, const QString& explanation);
    /// All known values with their names: "MER 34.9 dB".
    QStringList texts() const;
    /// Replaces the names of a line that was added with names, until they are empty again.
    void rename(std::size_t line, const QStringList& names);
    /// Turns a line, not the last one, into names of the values of the next line; empty names turn
    /// it back into values.
    void setNames(std::size_t line, const QStringList& names);
    /// Shows a note in place of the first values of a line; an empty one shows the values again.
    /// @param explanation  what to do about it, shown as a tool tip.
    void setNote(std::size_t line, int columnCount, const QString& text,
                 const QString& explanation);

    QSize sizeHint() const override;

    QString text(std::size_t line, std::size_t column) const;
    /// The note of a line; empty without one.
    QString note(std::size_t line) const;
    QString gate() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Line
    {
        int row = 0;
        std::vector<QLabel*> values;
        std::vector<QLabel*> heads; // with their names, of the first line that was added
        QStringList usual;          // texts of those
        QStringList names;          // of the next line's values
        QLabel* note = nullptr;
    };

    QLabel* addLabel(const QString& text, int row, int column, int columnCount = 1);
    void name(QLabel& value, const QString& name);
    void fit();

    QScrollArea* m_scroll;
    QLabel* m_gate;
    QGridLayout* m_grid;
    QMap<QString, QString> m_meanings; // by name
    std::vector<Line> m_lines;
};
