// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Random.h"

/// Frequency shift keying of constant power and continuous phase, which is the exact integral of
/// the frequency's pulses. Frequencies are in nominal symbol rates.
struct FrequencySignal
{
    int levelCount = 2;
    double deviation = 0.25;    ///< of the outer levels
    double bandwidthTime = 0.0; ///< of a Gaussian filter of rectangular pulses; 0: none
    double offset = 0.0;        ///< of the centre
    double samplesPerSymbol = 8.0;
    double clockPpm = 0.0;
    double snr = 40.0; ///< in a bandwidth of one symbol rate, dB
    int symbolCount = 2000;

    Signal make(Random& random) const;

    /// Frequency in the middle of a symbol whose neighbours are as often high as low, against that
    /// of a long run.
    double share() const;

private:
    double sigma() const;               ///< of the filter's impulse response, symbols
    double integral(double time) const; ///< of a pulse up to a time in symbols from its middle
};
