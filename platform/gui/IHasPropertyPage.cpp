// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/gui/IHasPropertyPage.h"

IHasPropertyPage::~IHasPropertyPage() = default;
