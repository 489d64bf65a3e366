// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include <optional>
#include <utility>

class VCGLTimeDiagram;

/// Marks a stretch of the time diagram. Mouse events go through it to the diagram.
class TimeMark : public QWidget
{
    Q_OBJECT
public:
    explicit TimeMark(VCGLTimeDiagram& view);

    /// @param stretch  in units of the axis; none: no mark.
    void mark(const std::optional<std::pair<double, double>>& stretch);
    const std::optional<std::pair<double, double>>& stretch() const { return m_stretch; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void place();

    VCGLTimeDiagram& m_view;
    std::optional<std::pair<double, double>> m_stretch;
};
