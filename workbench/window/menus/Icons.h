// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QIcon>

/// Signs of the tool bar, drawn in the palette's text colour at any size.
enum class Sign { Open, Play, Pause, ToStart, Repeat, AutoScale, Density };

QIcon signIcon(Sign sign);
