// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

/// Allocations of the process by operator new, since it started. Whoever links Allocations.cpp has
/// them counted.
std::size_t allocationCount();
