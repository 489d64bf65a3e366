// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/FourierTransforms.h"
#include "workbench/receiver/SampledSignal.h"

#include <array>
#include <complex>
#include <cstddef>
#include <optional>
#include <vector>

/// A part of a signal, and the spectra in which a symbol clock leaves a line: that of the squared
/// envelope and that of the squared derivative of the whitened part.
///
/// Whitened means that lines of the signal itself are levelled, and that its band is equally strong
/// everywhere. Bins are 1 / duration apart.
class ClockSpectra
{
public:
    using Complex = std::complex<double>;

    struct Spectrum
    {
        /// F ratio of a line (Thomson, Proc. IEEE 70(9), 1982): its power over that of pieces of
        /// the wave without it, where the window is wide open.
        double steadiness(double bin) const;
        /// Position of a line near a bin, from the slope of its phase, to a small part of a bin.
        double refined(double bin) const;

        std::vector<double> wave;     ///< squared envelope or derivative, about its mean
        std::vector<double> strength; ///< of each bin: power over that of the noise about it
    };

    /// @param start, length  of the part, within the signal, which is finite; its real parts only
    ///                       where it is not complex. At least 1024 samples.
    /// @return none where it has no power.
    static std::optional<ClockSpectra> of(const SampledSignal& signal, std::size_t start,
                                          std::size_t length, FourierTransforms& transforms);

    const std::array<Spectrum, 2>& spectra() const { return m_spectra; }
    double sampleRate() const { return m_sampleRate; } ///< Hz
    double start() const { return m_start; }           ///< s
    double duration() const { return m_duration; }     ///< s
    double bandwidth() const { return m_bandwidth; }   ///< Hz, on both sides of its middle

    /// Whether the middle of the band is empty over a twentieth of a rate, Hz, on either side.
    bool isHollow(double rate) const;
    /// Whether much of the signal is lines of its own, as where a frame comes again and again. One
    /// line may be a carrier.
    bool isPeriodic() const;
    /// Correlation of the signal, without its own lines, with itself some periods of a rate later,
    /// 0 to 1; data have none.
    double repetition(double rate) const;

private:
    std::size_t findBand(const std::vector<double>& excess, bool isSymmetric);
    void whiten(std::size_t firstBand, const std::vector<Complex>& spectrum,
                const std::vector<double>& power, const std::vector<double>& levels);
    Spectrum spectrumOf(bool isDerivative, FourierTransforms& transforms) const;

    double m_sampleRate = 1.0;
    double m_start = 0.0;
    double m_duration = 1.0;
    double m_bandwidth = 0.0;
    std::size_t m_bandLength = 1;    // bins
    std::vector<double> m_levels;    // of the signal in its bands, 0 where there is none
    double m_center = 0.0;           // bins of m_whitened
    std::vector<Complex> m_whitened; // from the first bin of the first band on
    std::vector<double> m_power;     // of the signal, lines levelled, in these bins
    double m_linePower = 0.0;        // above the level, of all lines of the signal...
    double m_highestLine = 0.0;      // ...and of the highest
    std::array<Spectrum, 2> m_spectra;
};
