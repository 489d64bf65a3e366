// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiveSource.h"
#include "workbench/sources/Recording.h"

#include <memory>

/// The signal of a radio, through SoapySDR. Where the device or its driver lost samples, one counts
/// as missing, because drivers do not say how many; a device that fails ends the signal.
class SoapySource : public LiveSource
{
    Q_DECLARE_TR_FUNCTIONS(SoapySource)
public:
    /// Opens a device.
    /// @param address     soapy://KEY=VALUE,...: rate and freq in Hz, gain in dB (where not given,
    ///                    automatic if the device can), antenna, channel from 0; other keys choose
    ///                    the device. Without any the failure says which devices are there.
    /// @param sampleRate  Hz, where the address has no rate.
    static Result<Recording> open(const QString& address, std::optional<double> sampleRate);
    ~SoapySource() override;

protected:
    bool receive(std::vector<char>& bytes) override;
    std::optional<Message> amiss() const override;

private:
    class Device;

    SoapySource(const QString& address, std::unique_ptr<Device> device);
    bool end(const QString& why);

    std::unique_ptr<Device> m_device;
    std::optional<Message> m_end; // why no more can come
};
