// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/IMouseHandler.h"

IMouseHandler::~IMouseHandler() = default;
