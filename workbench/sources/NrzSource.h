// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/SignalSource.h"

#include <QCoreApplication>

#include <memory>
#include <random>

class LowPass;

struct NrzSettings
{
    static constexpr double minNoiseDb = -60.0; ///< rms against the largest level
    static constexpr double maxNoiseDb = 6.0;
    static constexpr double maxJitter = 0.3;
    static constexpr double minSymbolRate = 100.0; ///< Bd, at the sample rate that follows
    static constexpr double maxSymbolRate = 9600.0;

    double sampleRate = 48000.0;   ///< Hz, > 0
    double symbolRate = 1200.0;    ///< Bd, > 0, at most a quarter of the sample rate
    int frameSymbolCount = 40;     ///< symbols of a frame, at least 16
    int levelCount = 2;            ///< 2 or 4, evenly from -1 to 1
    double noise = 0.05;           ///< rms of the noise
    double jitter = 0.0;           ///< rms displacement of the edges, symbols, up to maxJitter
    double bandwidth = 0.8;        ///< where the signal is 3 dB down, as a part of the symbol rate
    std::uint32_t seed = 20260801; ///< of data, jitter and noise
};

/// Endless data stream (non-return to zero) as a receiver sees it: levels whose edges come early or
/// late by the jitter, through a Bessel low-pass, with noise of the same bandwidth. Each frame is a
/// 16 bit sync word in the outer levels and random data. Data and jitter of a frame depend on its
/// number and the seed alone, so that any position can be sought.
class NrzSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(NrzSource)
public:
    static constexpr int syncSymbolCount = 16;

    explicit NrzSource(const NrzSettings& settings = NrzSettings());
    ~NrzSource() override;

    const NrzSettings& settings() const { return m_settings; }
    /// These act on the samples read from now on.
    void setNoise(double rms);
    void setJitter(double rms);
    void setBandwidth(double bandwidth);

    std::optional<std::int64_t> sampleCount() const override { return std::nullopt; }
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    struct Symbol
    {
        double level;
        double shift; // of its leading edge, as a part of the jitter's rms
    };
    struct Frame
    {
        std::int64_t number = -1;
        std::vector<Symbol> symbols;
    };

    void prepareFilter();
    double samplesPerSymbol() const { return m_settings.sampleRate / m_settings.symbolRate; }
    double levelAt(std::int64_t position);
    const Symbol& symbolAt(std::int64_t number);
    void fill(Frame& frame, std::int64_t number) const;

    NrzSettings m_settings;
    std::int64_t m_position = 0;
    Frame m_frames[2]; // the latest one with an even number, and with an odd one
    std::mt19937 m_noiseBits;
    std::normal_distribution<double> m_normal;
    std::unique_ptr<LowPass> m_filter;
};
