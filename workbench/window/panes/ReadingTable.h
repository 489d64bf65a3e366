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

    /// What names mean, for those who point at them or at their values.
    void explain(const QMap<QString, QString>& meanings) { m_meanings = meanings; }
    /// Adds names, and below them lines of values, none of which is known yet.
    /// @param longest    usual text of a value, which the columns are made wide enough for.
    /// @return the index of the first line.
    std::size_t addLines(const QStringList& names, int lineCount, const QString& longest);
    /// Makes a column as wide as another longest text, and its head, need.
    void fitColumn(int column, const QString& longest);
    /// Shows a value; empty: not known.
    /// @param why  it is not, for those who point at it; shown only then.
    void show(std::size_t line, std::size_t column, const QString& text,
              const QString& why = QString());
    /// Says below all lines what the values are of; in several lines where there is no room.
    void setGate(const QString& text, const QString& explanation);
    /// All names whose values are known, with these: "MER 34.9 dB".
    QStringList texts() const;
    /// Other names of the values in a line that was added with names, until they are empty again.
    void rename(std::size_t line, const QStringList& names);
    /// Makes a line, not the last one, names of the values of the next line, until it is empty
    /// again: a line of values then.
    void setNames(std::size_t line, const QStringList& names);
    /// Says in the place of a line's first values why there are none; empty: shows them.
    /// @param explanation  what to do about it, for those who point at the table.
    void setNote(std::size_t line, int columnCount, const QString& text,
                 const QString& explanation);

    QSize sizeHint() const override;

    QString text(std::size_t line, std::size_t column) const;
    /// The note in a line; empty without one.
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
