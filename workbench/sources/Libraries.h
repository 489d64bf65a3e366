// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace libraries {

/// Names and versions of the libraries that read signals, as they are loaded, one each.
QStringList versions();

} // namespace libraries
