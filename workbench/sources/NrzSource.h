// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/SignalSource.h"

#include <QCoreApplication>

#include <random>

struct NrzSettings
{
    double sampleRate = 48000.0;   ///< Hz, > 0
    double symbolRate = 1200.0;    ///< Bd, > 0, at most half the sample rate
    int frameSymbolCount = 40;     ///< symbols of a frame, at least 16
    double noise = 0.05;           ///< rms of the noise; the signal's levels are -1 and 1
    double bandwidth = 0.8;        ///< where the signal is 3 dB down, as a part of the symbol rate
    std::uint32_t seed = 20260801; ///< of data and noise
};

/// Endless two-level data stream (non-return to zero) as a receiver sees it: levels -1 and 1
/// through a low-pass, with noise of the same band. Each frame is a 16 bit sync word and random
/// data; a frame's data depend on its number and the seed alone, so that every place in the stream
/// can be gone to.
class NrzSource : public SignalSource
{
    Q_DECLARE_TR_FUNCTIONS(NrzSource)
public:
    static constexpr int syncSymbolCount = 16;

    explicit NrzSource(const NrzSettings& settings = NrzSettings());
    ~NrzSource() override;

    const NrzSettings& settings() const { return m_settings; }
    /// Both act on the samples read from now on.
    void setNoise(double rms);
    void setBandwidth(double bandwidth);

    QString name() const override;
    double sampleRate() const override { return m_settings.sampleRate; }
    int channelCount() const override { return 1; }
    std::optional<std::int64_t> sampleCount() const override { return std::nullopt; }
    std::optional<double> symbolRate() const override { return m_settings.symbolRate; }
    std::optional<double> frameLength() const override;
    std::int64_t position() const override { return m_position; }
    std::size_t read(std::vector<double>& block, std::size_t count) override;
    bool seek(std::int64_t position) override;

private:
    void prepareFilter();
    double levelAt(std::int64_t position);

    NrzSettings m_settings;
    std::int64_t m_position = 0;
    std::int64_t m_frame = -1; // the one that m_levels holds
    std::vector<double> m_levels;
    std::mt19937 m_noiseBits;
    std::normal_distribution<double> m_normal;
    double m_pole = 0.0;       // of both low-pass stages
    double m_noiseScale = 0.0; // so that the filtered noise has the rms asked for
    double m_first = 0.0;      // states of the stages
    double m_second = 0.0;
};
