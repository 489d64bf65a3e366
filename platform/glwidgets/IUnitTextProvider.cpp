// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/IUnitTextProvider.h"

IUnitTextProvider::~IUnitTextProvider() = default;
