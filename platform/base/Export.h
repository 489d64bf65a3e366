// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#if defined(ORVANE_PLATFORM_BUILD)
#define ORVANE_PLATFORM_API Q_DECL_EXPORT
#else
#define ORVANE_PLATFORM_API Q_DECL_IMPORT
#endif
