// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiveSource.h"

#include <memory>

/// Samples of a radio that SoapySDR knows.
class SoapySource : public LiveSource
{
    Q_DECLARE_TR_FUNCTIONS(SoapySource)
public:
    /// Opens a device and starts it, and says in the recording what came of it.
    /// @param address  soapy://KEY=VALUE,... of which freq and rate (Hz), gain (dB), antenna and
    ///                 channel are set, and the others choose the device.
    /// @param options  its sample rate is the rate where the address does not say it.
    static void open(Recording& recording, const QString& address,
                     const Recording::Options& options);
    ~SoapySource() override;

private:
    struct Radio;
    SoapySource(const QString& name, std::unique_ptr<Radio> radio, double sampleRate);

    void receive(std::vector<char>& bytes, std::size_t most) override;
    QString peer() const override { return tr("the radio"); }

    std::unique_ptr<Radio> m_radio;
    int m_failureCount = 0; // in a row
};
