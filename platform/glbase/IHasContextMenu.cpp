// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/IHasContextMenu.h"

IHasContextMenu::~IHasContextMenu() = default;
