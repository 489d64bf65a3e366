// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

constexpr double pi = 3.14159265358979323846;
