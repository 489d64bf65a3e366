// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glbase/IGLDrawObject.h"

IGLDrawObject::~IGLDrawObject() = default;
