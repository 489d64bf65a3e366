// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
// In the place of libraries that were not there when this was built.
#include "PeerPlot.h"

#ifndef ORVANE_HAS_QWT
std::unique_ptr<PeerPlot> makeQwtPlot(const PeerSignal&, bool) { return nullptr; }
#endif
#ifndef ORVANE_HAS_QCUSTOMPLOT
std::unique_ptr<PeerPlot> makeCustomPlot(const PeerSignal&) { return nullptr; }
#endif
