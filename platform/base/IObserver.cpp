// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/base/IObserver.h"

IObserver::~IObserver() = default;
