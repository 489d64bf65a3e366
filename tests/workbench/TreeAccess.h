// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Tree.h"
#include "platform/values/Values.h"

#include <numeric>
#include <vector>

template<class Value>
Value& valueAt(const char* path)
{
    return dynamic_cast<Value&>(*values::Tree::Instance().FindValue(path));
}

inline double numberAt(const char* path)
{
    return valueAt<values::ValueNumeric<double>>(path).GetValue();
}

inline std::vector<double> listAt(const char* path)
{
    const auto& list = valueAt<values::ValueList<double>>(path).GetList();
    return {list.begin(), list.end()};
}

/// Whole numbers that count up.
inline std::vector<double> ramp(double count, double first = 0.0)
{
    std::vector<double> samples(static_cast<std::size_t>(count));
    std::iota(samples.begin(), samples.end(), first);
    return samples;
}
