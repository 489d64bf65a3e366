// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/FourierTransforms.h"
#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/receiver/SpectralPeak.h"

#include <complex>
#include <vector>

/// Estimates the frequency of a modulated carrier from a window of samples.
///
/// The middle of the spectrum gives a coarse but unambiguous frequency: the likeliest shift of the
/// pulse's spectrum above a noise floor (Whittle, "Estimation and information in stationary time
/// series", Arkiv Mat. 2, 1953). After the matched filter, the power that removes the modulation
/// leaves a line at a multiple of the remaining frequency (Rife and Boorstyn, "Single-tone
/// parameter estimation from discrete-time observations", IEEE Trans. Inf. Theory 20(5), 1974). It
/// gives a fine frequency, but ambiguous by a part of the symbol rate. The candidate that fits the
/// spectrum best is taken.
class FrequencyEstimate
{
public:
    using Sample = std::complex<float>;

    struct Result
    {
        bool isFound = false;
        double offset = 0.0;        ///< cycles a symbol, from -1 to 1
        bool mayBeAlias = false;    ///< another candidate fits the spectrum nearly as well
        double aliasDistance = 0.0; ///< cycles a symbol, distance to that candidate
    };

    /// @param perSymbol  samples of a symbol, whole.
    /// @param taps       of the matched filter at this rate; empty: none.
    FrequencyEstimate(ReceiverSettings::Modulation modulation, int perSymbol,
                      const std::vector<float>& taps);

    /// @param samples  finite; at least 16 symbols.
    Result of(const std::vector<Sample>& samples);

private:
    using Complex = std::complex<double>;
    struct Line
    {
        double offset = 0.0;   ///< of the carrier from the middle of the search, cycles a symbol
        double strength = 0.0; ///< against noise; 0: none
    };

    std::vector<double> bandsOf(const std::vector<Complex>& spectrum) const;
    double likelihood(const std::vector<double>& bands, double offset) const;
    static double flatLikelihood(const std::vector<double>& bands);
    double pulseAt(double frequency) const;
    template<class Weight>
    std::vector<Complex> filtered(const std::vector<Complex>& spectrum, std::int64_t shift,
                                  Weight weight);
    Line lineOf(const std::vector<Complex>& spectrum, double coarse);
    SpectralPeak edgeLineOf(const std::vector<Complex>& spectrum, std::int64_t shift,
                            std::size_t padded, double least);

    ReceiverSettings::Modulation m_modulation;
    int m_perSymbol;
    std::vector<double> m_window; ///< over the samples that were examined last
    std::vector<double> m_pulse;  ///< power of the pulse's spectrum, from 0 up
    FourierTransforms m_transforms;
};
