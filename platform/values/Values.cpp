// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/values/Values.h"

namespace values {

ValueSelection::~ValueSelection() = default;

template class Value<bool>;
template class Value<double>;
template class ValueNumeric<double>;
template class ValueList<double>;

} // namespace values
