// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/SoapySource.h"

#include "workbench/sources/PlainText.h"

#include <QtEndian>

#include <SoapySDR/Device.hpp>
#include <SoapySDR/Errors.hpp>
#include <SoapySDR/Formats.hpp>
#include <SoapySDR/Logger.hpp>
#include <SoapySDR/Registry.hpp>

#include <algorithm>
#include <complex>
#include <stdexcept>

namespace {

using Sample = std::complex<float>;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(SoapySource)
};

/// Removes an entry from an address, and returns its text.
QString takeText(SoapySDR::Kwargs& entries, const char* key)
{
    const auto entry = entries.find(key);
    if (entry == entries.end())
        return QString();
    QString text = QString::fromStdString(entry->second);
    entries.erase(entry);
    return text;
}

std::optional<double> takeNumber(SoapySDR::Kwargs& entries, const char* key, double lowest,
                                 double highest)
{
    const QString text = takeText(entries, key);
    if (text.isEmpty())
        return std::nullopt;
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    if (!isNumber || !(number >= lowest && number <= highest))
        throw Message{Text::tr("%1=%2 cannot be used; give a number from %3 to %4")
                          .arg(QString::fromLatin1(key), plainText(text), QString::number(lowest),
                               QString::number(highest))};
    return number;
}

/// The devices that are present, written as in an address.
QString devices()
{
    QStringList names;
    for (const SoapySDR::Kwargs& device : SoapySDR::Device::enumerate()) {
        QStringList entries;
        for (const char* key : {"driver", "serial", "label"}) {
            if (const auto entry = device.find(key); entry != device.end())
                entries += QString::fromLatin1(key) + QLatin1Char('=') +
                           plainText(QString::fromStdString(entry->second));
        }
        names += entries.join(QLatin1Char(','));
    }
    if (names.isEmpty())
        return Text::tr("no device was found: plug one in, or install its SoapySDR module");
    return Text::tr("the devices found are: %1").arg(names.join(QStringLiteral("; ")));
}

} // namespace

/// A device with a running stream. Throws what SoapySDR throws, and a Message where the
/// address is at fault.
class SoapySource::Device
{
public:
    Device(SoapySDR::Kwargs entries, std::optional<double> sampleRate)
    {
        constexpr double maxHertz = Recording::maxSampleRate;
        const auto rate = takeNumber(entries, "rate", 1.0, maxHertz);
        const auto frequency = takeNumber(entries, "freq", 0.0, maxHertz);
        const auto gain = takeNumber(entries, "gain", -1000.0, 1000.0);
        const QString antenna = takeText(entries, "antenna");
        const auto channel = takeNumber(entries, "channel", 0.0, 1023.0);
        if (entries.empty())
            throw Message{
                Text::tr("no device is named, such as soapy://driver=rtlsdr; %1").arg(devices())};
        if (!rate && !sampleRate)
            throw Message{Text::tr("its sample rate is not known; add rate=HZ to the address")};
        if (rate && sampleRate && *rate != *sampleRate)
            throw Message{Text::tr("the sample rate that is given is not the rate of the "
                                   "address; leave out one of them")};
        m_device = make(entries);
        m_channel = static_cast<std::size_t>(channel.value_or(0.0));
        if (m_channel >= m_device->getNumChannels(SOAPY_SDR_RX))
            throw Message{Text::tr("the device has no channel %1 to receive on; choose another")
                              .arg(m_channel)};
        if (!antenna.isEmpty())
            m_device->setAntenna(SOAPY_SDR_RX, m_channel, antenna.toStdString());
        m_device->setSampleRate(SOAPY_SDR_RX, m_channel, rate ? *rate : *sampleRate);
        if (frequency)
            m_device->setFrequency(SOAPY_SDR_RX, m_channel, *frequency);
        const bool isAutomatic = m_device->hasGainMode(SOAPY_SDR_RX, m_channel);
        if (isAutomatic)
            m_device->setGainMode(SOAPY_SDR_RX, m_channel, !gain);
        if (gain)
            m_device->setGain(SOAPY_SDR_RX, m_channel, *gain);
        m_sampleRate = m_device->getSampleRate(SOAPY_SDR_RX, m_channel);
        if (!Recording::isSampleRate(m_sampleRate))
            throw std::runtime_error("sample rate " + std::to_string(m_sampleRate));
        start();
    }
    double sampleRate() const { return m_sampleRate; }

    /// @return number of samples, or an error code < 0.
    int read(Sample* samples, std::size_t count, std::chrono::microseconds timeout)
    {
        void* buffers[] = {samples};
        int flags = 0;
        long long time = 0;
        return m_device->readStream(m_stream.get(), buffers, count, flags, time,
                                    static_cast<long>(timeout.count()));
    }
    std::size_t pieceLength() const { return m_pieceLength; }

private:
    struct Unmake
    {
        void operator()(SoapySDR::Device* device) const
        {
            try {
                SoapySDR::Device::unmake(device);
            } catch (const std::exception&) {
                // The device is gone; there is nothing to close.
            }
        }
    };
    struct Close
    {
        void operator()(SoapySDR::Stream* stream) const
        {
            try {
                device->deactivateStream(stream);
                device->closeStream(stream);
            } catch (const std::exception&) {
                // As above.
            }
        }
        SoapySDR::Device* device;
    };
    using Owner = std::unique_ptr<SoapySDR::Device, Unmake>;

    static Owner make(const SoapySDR::Kwargs& entries)
    {
        try {
            if (SoapySDR::Device* device = SoapySDR::Device::make(entries))
                return Owner(device);
        } catch (const std::exception& error) {
            throw Message{Text::tr("the device cannot be opened (%1); %2")
                              .arg(plainText(QString::fromLocal8Bit(error.what())), devices())};
        }
        throw Message{Text::tr("there is no such device; %1").arg(devices())};
    }
    void start()
    {
        m_stream = {m_device->setupStream(SOAPY_SDR_RX, SOAPY_SDR_CF32, {m_channel}),
                    Close{m_device.get()}};
        const int result =
            m_stream ? m_device->activateStream(m_stream.get()) : SOAPY_SDR_NOT_SUPPORTED;
        if (result != 0)
            throw std::runtime_error(SoapySDR::errToStr(result));
        constexpr std::size_t shortest = 1024;
        m_pieceLength = std::clamp(m_device->getStreamMTU(m_stream.get()), shortest,
                                   pieceSize / sizeof(Sample));
    }

    Owner m_device;
    std::unique_ptr<SoapySDR::Stream, Close> m_stream{nullptr, Close{nullptr}};
    std::size_t m_channel = 0;
    double m_sampleRate = 0.0;
    std::size_t m_pieceLength = 0;
};

Result<Recording> SoapySource::open(const QString& address, std::optional<double> sampleRate)
{
    // Drivers log much; what matters comes back as errors. Users who want the log set its level.
    if (qEnvironmentVariableIsEmpty("SOAPY_SDR_LOG_LEVEL"))
        SoapySDR::setLogLevel(SOAPY_SDR_FATAL);
    const QString entries = address.mid(address.indexOf(QLatin1String("://")) + 3);
    try {
        auto device =
            std::make_unique<Device>(SoapySDR::KwargsFromString(entries.toStdString()), sampleRate);
        Recording recording;
        recording.source.reset(new SoapySource(address, std::move(device)));
        return recording;
    } catch (const Message& badAddress) {
        return tl::unexpected(badAddress);
    } catch (const std::exception& error) {
        return failure(tr("the device cannot be used like this (%1); change the address")
                           .arg(plainText(QString::fromLocal8Bit(error.what()))));
    }
}

SoapySource::SoapySource(const QString& address, std::unique_ptr<Device> device)
    : LiveSource(address, {SampleFormat::Kind::Float, 32, true, Q_BYTE_ORDER == Q_BIG_ENDIAN},
                 device->sampleRate())
    , m_device(std::move(device))
{}

SoapySource::~SoapySource() = default;

bool SoapySource::receive(std::vector<char>& bytes)
{
    std::vector<Sample> samples(m_device->pieceLength());
    int count = 0;
    try {
        count = m_device->read(samples.data(), samples.size(), timeout);
    } catch (const std::exception& error) {
        return end(plainText(QString::fromLocal8Bit(error.what())));
    }
    switch (count) {
    case SOAPY_SDR_TIMEOUT:
        return true;
    case SOAPY_SDR_OVERFLOW:
    case SOAPY_SDR_CORRUPTION:
    case SOAPY_SDR_TIME_ERROR:
        leap(1); // the number is not known
        return true;
    default:
        if (count < 0)
            return end(QString::fromLatin1(SoapySDR::errToStr(count)));
    }
    const auto* first = reinterpret_cast<const char*>(samples.data());
    const std::size_t read = std::min(static_cast<std::size_t>(count), samples.size());
    bytes.insert(bytes.end(), first, first + read * sizeof(Sample));
    return true;
}

bool SoapySource::end(const QString& why)
{
    m_end = tr("the device has failed (%1); check it and open it again").arg(why);
    m_device.reset();
    return false;
}

std::optional<Message> SoapySource::amiss() const { return m_end ? m_end : LiveSource::amiss(); }
