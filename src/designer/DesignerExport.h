// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#if defined(ORVANE_DESIGNER_BUILD)
#define ORVANE_DESIGNER_API Q_DECL_EXPORT
#else
#define ORVANE_DESIGNER_API Q_DECL_IMPORT
#endif
