// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Random.h"

#include <limits>

/// Symbols a(k) in complex pulses, s(t) = sum of a(k) g(t - kT - t0), of root raised cosine pulses
/// g, summed at the exact times of the samples. Mean power 1 before impairments: g has the energy
/// of T samples, so that white noise of Es/N0 has the variance T / (Es/N0) a sample.
struct LinearSignal
{
    enum class Modulation { Bpsk, Qpsk, Psk8, Qam16, Qam64, Oqpsk, Pi4Dqpsk };
    static constexpr double none = std::numeric_limits<double>::infinity();

    Modulation modulation = Modulation::Qpsk;
    double rollOff = 0.35;
    double samplesPerSymbol = 4.0; ///< nominal; 1: one sample at each instant, without pulses
    double clockPpm = 0.0;         ///< by how much symbols come faster
    double carrier = 0.0;          ///< offset, nominal symbol rates
    double esN0 = 20.0;            ///< dB
    int symbolCount = 2000;
    double imbalance = 0.0;  ///< gain of I against Q at the transmitter, dB
    double quadrature = 0.0; ///< by how much less than 90 degrees its axes are apart
    double offset = -none;   ///< added to all of its points, dB of their power
    double drift = 0.0;      ///< by how much the level rises over the record, dB

    /// Symbols before and after a burst; 0: the signal runs on beyond the record at both ends.
    int gap = 0;
    enum class Ends {
        Tails, ///< of a burst: all of its pulses, and no others
        Ramps  ///< pulses of the running signal, faded over two symbols (raised cosine)
    } ends = Ends::Tails;
    bool isGapSilent = false; ///< no noise either

    Signal make(Random& random) const;

    /// Points of the modulation, mean power 1.
    static std::vector<Complex> pointsOf(Modulation modulation);

    /// Where an ideal transmitter would send 1 and i, this one sends these.
    Complex axisI() const;
    Complex axisQ() const;
    /// Square of the error vectors' r.m.s. that this signal must measure: noise after the matched
    /// filter, N0/Es; the image that imbalance and quadrature error make, d* as much as the gain of
    /// d leaves; the offset.
    double errorPower() const;
    /// Of two points of the modulation.
    double leastDistance() const;

private:
    std::vector<Complex> symbols(Random& random, int count) const;
    Complex sample(const std::vector<Complex>& symbols, double time, double period) const;
    double ramp(double symbol) const;
};
