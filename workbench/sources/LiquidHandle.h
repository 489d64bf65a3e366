// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <type_traits>

/// Owner of an object of liquid-dsp.
template<class Handle>
using LiquidHandle = std::unique_ptr<std::remove_pointer_t<Handle>, int (*)(Handle)>;
