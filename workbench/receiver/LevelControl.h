// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/SignalBlock.h"

/// Gain control of the constellation: brings I and Q, or the points, to a mean power of 1, with one
/// gain for each block. The time view and the eye keep their level. The gain follows slowly, over
/// thousands of symbols, and in steps, so that symbols of varying amplitude do not move it, and
/// stays between bursts.
class LevelControl
{
public:
    /// @param perSymbol  samples of a symbol; 0: not known.
    void configure(bool isOn, double perSymbol);
    /// Scales a block, and sets its gain.
    /// @param amplitude  r.m.s. of the symbols where the receiver knows it, else 0: of the samples.
    void process(SignalBlock& block, double amplitude);
    void reset();
    StageReport report() const;

private:
    bool m_isOn = false;
    double m_length = 1.0; // samples over which the power is taken
    double m_power = 0.0;  // mean
    double m_count = 0.0;  // samples that it rests on
    double m_gain = 1.0;
    bool m_knowsSymbols = false; // whether an amplitude was told
};
