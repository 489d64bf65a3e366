// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#if defined(ORVANE_BUILD)
#define ORVANE_API Q_DECL_EXPORT
#else
#define ORVANE_API Q_DECL_IMPORT
#endif
