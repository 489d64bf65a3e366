// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/SoapySource.h"

#include <QMap>

#include <algorithm>
#include <complex>
#include <exception>

#include <SoapySDR/Device.hpp>
#include <SoapySDR/Errors.hpp>
#include <SoapySDR/Formats.hpp>

namespace {

constexpr std::size_t maxRead = 1 << 17; // samples at a time
constexpr int maxFailureCount = 20;      // in a row, before the radio counts as gone

SampleFormat format()
{
    SampleFormat result;
    result.isComplex = true; // 32 bits, as the machine has them
    result.isBigEndian = Q_BYTE_ORDER == Q_BIG_ENDIAN;
    return result;
}

QStringList devices()
{
    QStringList names;
    for (const SoapySDR::Kwargs& device : SoapySDR::Device::enumerate()) {
        const auto driver = device.find("driver");
        if (driver != device.end())
            names += QStringLiteral("driver=") + QString::fromStdString(driver->second);
    }
    names.removeDuplicates();
    return names;
}

} // namespace

struct SoapySource::Radio
{
    explicit Radio(const SoapySDR::Kwargs& arguments)
        : device(SoapySDR::Device::make(arguments))
    {}
    ~Radio()
    {
        if (stream) {
            device->deactivateStream(stream);
            device->closeStream(stream);
        }
        SoapySDR::Device::unmake(device);
    }
    Radio(const Radio&) = delete;
    Radio& operator=(const Radio&) = delete;

    void start(std::size_t channel)
    {
        stream = device->setupStream(SOAPY_SDR_RX, SOAPY_SDR_CF32, {channel});
        device->activateStream(stream);
    }

    SoapySDR::Device* device;
    SoapySDR::Stream* stream = nullptr;
};

void SoapySource::open(Recording& recording, const QString& address,
                       const Recording::Options& options)
{
    const auto fail = [&recording](const QString& cause) {
        const QStringList known = devices();
        recording.why =
            known.isEmpty()
                ? tr("%1; no radio is found, connect one and check its module").arg(cause)
                : tr("%1; there are: %2").arg(cause, known.join(QStringLiteral(", ")));
    };
    const QString text = address.mid(address.indexOf(QLatin1String("//")) + 2);
    SoapySDR::Kwargs arguments;
    QMap<QString, double> numbers;
    QString antenna;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString key = part.section(QLatin1Char('='), 0, 0).trimmed();
        const QString value = part.section(QLatin1Char('='), 1).trimmed();
        if (key == QLatin1String("antenna")) {
            antenna = value;
        } else if (QStringList{"freq", "rate", "gain", "channel"}.contains(key)) {
            bool isNumber = false;
            numbers[key] = value.toDouble(&isNumber);
            if (!isNumber || !std::isfinite(numbers[key]) ||
                ((key == QLatin1String("rate") || key == QLatin1String("channel")) &&
                 (numbers[key] < 0.0 || numbers[key] > Recording::maxSampleRate))) {
                recording.why = tr("\"%1\" cannot be used; give a number").arg(part);
                return;
            }
        } else {
            arguments[key.toStdString()] = value.toStdString();
        }
    }
    if (arguments.empty()) {
        fail(tr("it does not say which radio; give soapy://driver=NAME"));
        return;
    }
    try {
        auto radio = std::make_unique<Radio>(arguments);
        const auto channel = static_cast<std::size_t>(numbers.value(QStringLiteral("channel")));
        SoapySDR::Device& device = *radio->device;
        const double rate = numbers.value(QStringLiteral("rate"), options.sampleRate.value_or(0.0));
        if (rate > 0.0)
            device.setSampleRate(SOAPY_SDR_RX, channel, rate);
        if (numbers.contains(QStringLiteral("freq")))
            device.setFrequency(SOAPY_SDR_RX, channel, numbers[QStringLiteral("freq")]);
        if (numbers.contains(QStringLiteral("gain")))
            device.setGain(SOAPY_SDR_RX, channel, numbers[QStringLiteral("gain")]);
        if (!antenna.isEmpty())
            device.setAntenna(SOAPY_SDR_RX, channel, antenna.toStdString());
        const double sampleRate = device.getSampleRate(SOAPY_SDR_RX, channel);
        if (!(sampleRate > 0.0 && sampleRate <= Recording::maxSampleRate)) {
            recording.why = tr("the radio has no sample rate; give it, such as rate=2e6");
            return;
        }
        radio->start(channel);
        recording.details += tr("Radio: %1").arg(QString::fromStdString(device.getHardwareKey()));
        recording.source.reset(new SoapySource(address, std::move(radio), sampleRate));
    } catch (const std::exception& error) {
        fail(tr("the radio cannot be used (%1)").arg(QString::fromLocal8Bit(error.what())));
    }
}

SoapySource::SoapySource(const QString& name, std::unique_ptr<Radio> radio, double sampleRate)
    : LiveSource(name, format(), sampleRate)
    , m_radio(std::move(radio))
{}

SoapySource::~SoapySource() = default;

void SoapySource::receive(std::vector<char>& bytes, std::size_t most)
{
    const std::size_t before = bytes.size();
    const std::size_t wanted = std::clamp<std::size_t>(most / sampleSize(), 1, maxRead);
    bytes.resize(before + wanted * sampleSize());
    void* buffers[] = {bytes.data() + before};
    int flags = 0;
    long long time = 0;
    const auto patienceUs = std::chrono::duration_cast<std::chrono::microseconds>(patience).count();
    int got = SOAPY_SDR_STREAM_ERROR;
    try {
        got = m_radio->device->readStream(m_radio->stream, buffers, wanted, flags, time,
                                          static_cast<long>(patienceUs));
    } catch (const std::exception&) {
    }
    bytes.resize(before + static_cast<std::size_t>(std::max(got, 0)) * sampleSize());
    if (got >= 0 || got == SOAPY_SDR_TIMEOUT) {
        if (m_failureCount > 0)
            setTrouble(QString());
        m_failureCount = 0;
    } else if (got == SOAPY_SDR_OVERFLOW) {
        countLost(1);
    } else {
        setTrouble(tr("the radio reports an error (%1)")
                       .arg(QString::fromLatin1(SoapySDR::errToStr(got))));
        if (++m_failureCount >= maxFailureCount)
            end();
    }
}
