// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/Readings.h"

std::vector<Readings::Section> Readings::meanings()
{
    const Section time{tr("Below the time diagram"),
                       {{tr("Mean"), tr("Sum of the samples / their number")},
                        {tr("Minimum"), tr("Lowest sample")},
                        {tr("Maximum"), tr("Highest sample")},
                        {tr("Peak to peak"), tr("Maximum - minimum")},
                        {tr("RMS"), tr("√(mean of the squared samples)")},
                        {tr("RMS (AC)"), tr("√(mean of the squared distances from the mean)")},
                        {tr("Frequency"),
                         tr("Whole periods / their duration, of a periodic signal: between rising "
                            "crossings of the middle of its two levels")}}};
    const Section eye{
        tr("Below the eye diagram, for each eye"),
        {{tr("Height"), tr("(m₁ - m₀) - 3 (σ₁ + σ₀), of the levels at the instants of decision: "
                           "their means m and standard deviations σ")},
         {tr("Opening"), tr("Height / (m₁ - m₀); 0 % where the eye is closed")},
         {tr("Width"), tr("From the crossings on the left to those on the right, less 3 standard "
                          "deviations of each, in symbol periods (UI)")},
         {tr("Crossing"), tr("(Level at which mean rising and mean falling traces cross - m₀) / "
                             "(m₁ - m₀); 50 % where ones and zeros last equally long")},
         {tr("Jitter RMS"), tr("Standard deviation of the times at which single traces cross that "
                               "level, in symbol periods (UI)")},
         {tr("Jitter p-p"), tr("Latest less earliest of these times, in symbol periods (UI); grows "
                               "with the length of the gate")},
         {tr("Q"), tr("(m₁ - m₀) / (σ₁ + σ₀)")},
         {tr("Inner", "height of the eye"), tr("Lowest sample of the ones - highest of the zeros, "
                                               "at the instants of decision")},
         {tr("One", "level"), tr("m₁, mean of the ones at the instants of decision")},
         {tr("Zero", "level"), tr("m₀, mean of the zeros at the instants of decision")},
         {tr("Instant", "of the crossing"),
          tr("When traces cross, from the instant of decision on, "
             "in symbol periods (UI); -0.5 where that is in the "
             "middle of the eye")},
         {tr("σ one", "noise of the level"), tr("σ₁, standard deviation of the ones")},
         {tr("σ zero", "noise of the level"), tr("σ₀, standard deviation of the zeros")}}};
    const Section constellation{
        tr("Below the IQ diagram"),
        {{tr("EVM RMS"), tr("RMS of the distances from the ideal points / RMS of the ideal points, "
                            "at the instants of decision, once turn and scale fit best")},
         {tr("EVM peak"),
          tr("Largest distance from an ideal point / RMS of the ideal points; grows "
             "with the number of symbols")},
         {tr("MER"), tr("-20 log₁₀(EVM RMS)")},
         {tr("Carrier"), tr("Carrier frequency above the middle of the channel ± its standard "
                            "deviation")},
         {tr("Offset"), tr("10 log₁₀(power that all points have in common / power of the points)")},
         {tr("Imbalance"), tr("20 log₁₀(gain of I / gain of Q)")},
         {tr("Quadrature"), tr("By how much the axes of I and Q miss a right angle")},
         {tr("Symbol rate"),
          tr("By how much symbols come faster than at the nominal rate, in parts "
             "per million ± their standard deviation")},
         {tr("Deviation"), tr("Of FM: frequency of the outer levels from their middle, at the "
                              "instants of decision")},
         {tr("Index"), tr("Of FM: distance of neighbouring levels / symbol rate")},
         {tr("Centre"), tr("Of FM: middle of the levels above the middle of the channel")}}};
    return {time, eye, constellation};
}
