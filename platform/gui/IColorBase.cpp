// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/gui/IColorBase.h"

IColorBase::~IColorBase() = default;
