// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

/// Joins neighbours with the same stroke into one rectangle.
template<typename Span, typename Put>
class StrokeRuns
{
public:
    StrokeRuns(const Put& put, int first)
        : m_put(put)
        , m_start(first)
    {}
    /// The next stroke at a position after the last one; an empty stroke at the end.
    void Next(int position, const Span& stroke)
    {
        if (stroke == m_stroke)
            return;
        m_put(Span{m_start, position}, m_stroke);
        m_stroke = stroke;
        m_start = position;
    }

private:
    const Put& m_put;
    Span m_stroke{0, 0};
    int m_start;
};
