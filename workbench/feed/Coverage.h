// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>

/// Which symbols of a signal were met, by time: a part that is played again brings none of them
/// anew, though its clock may be found anew and be a little off. Within one run through the signal
/// all symbols are different ones, however near to one another a slip of the clock puts them.
class Coverage
{
public:
    /// @param period  of a symbol, s, > 0.
    explicit Coverage(double period)
        : m_reach(0.4 * period)
    {}

    /// The next symbols come from an earlier place of the signal.
    void startRun();
    /// Adds the symbol at a time, s. False where it was met in an earlier run.
    bool add(double time);

private:
    using Spans = std::map<double, double>; // from begin to end

    void join(Spans& spans, double begin, double end) const;

    double m_reach; // to either side: less than half, as clocks wander
    Spans m_earlier, m_run;
};
