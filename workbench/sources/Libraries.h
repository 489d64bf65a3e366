// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace libraries {

/// Names and versions of the loaded libraries that read signals, one text for each.
QStringList versions();

} // namespace libraries
