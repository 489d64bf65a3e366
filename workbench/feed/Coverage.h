// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>

/// Which symbols of a signal were met, by time: a part that is played again brings none of them
/// anew.
class Coverage
{
public:
    /// @param period  of a symbol, s, > 0.
    explicit Coverage(double period)
        : m_reach(0.4 * period)
    {}

    /// Adds the symbol at a time, s. False where it was met before.
    bool add(double time);

private:
    double m_reach;                   // to either side: less than half, as clocks wander
    std::map<double, double> m_spans; // from begin to end
};
