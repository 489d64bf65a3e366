// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "Measurement.h"
#include "Peer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>

namespace {

/// A script receives, for as long as it is told what: a line a signal.
class GnuRadio : public Peer
{
public:
    explicit GnuRadio(std::unique_ptr<QProcess> process)
        : m_process(std::move(process))
        , m_version(QString::fromUtf8(m_process->readLine()).trimmed())
    {}
    ~GnuRadio() override
    {
        m_process->closeWriteChannel();
        m_process->waitForFinished();
    }

    QString name() const override { return QStringLiteral("GNU Radio %1").arg(m_version); }
    std::vector<std::vector<Symbol>> receive(const Signal& signal, const LinearSignal& kind,
                                             double carrier, double timingLoop,
                                             const std::vector<double>& carrierLoops) override;

private:
    std::unique_ptr<QProcess> m_process;
    QString m_version;
    QTemporaryDir m_folder;
};

std::vector<std::vector<Peer::Symbol>> GnuRadio::receive(const Signal& signal,
                                                         const LinearSignal& kind, double carrier,
                                                         double timingLoop,
                                                         const std::vector<double>& carrierLoops)
{
    std::vector<std::vector<Symbol>> received(carrierLoops.size());
    const QString input = m_folder.filePath("signal.cf32");
    QFile output(m_folder.filePath("symbols.f64"));
    QJsonArray points;
    for (const Complex& point : LinearSignal::pointsOf(kind.modulation))
        points.append(QJsonArray{point.real(), point.imag()});
    QJsonArray loops;
    for (const double loop : carrierLoops)
        loops.append(loop);
    const QJsonObject order{{"input", input},
                            {"output", output.fileName()},
                            {"points", points},
                            {"symmetry", kind.modulation == LinearSignal::Modulation::Bpsk   ? 2
                                         : kind.modulation == LinearSignal::Modulation::Psk8 ? 8
                                                                                             : 4},
                            {"samples_per_symbol", kind.samplesPerSymbol},
                            {"roll_off", kind.rollOff},
                            {"noise", std::pow(10.0, -kind.esN0 / 10.0)},
                            {"carrier", carrier},
                            {"timing_loop", timingLoop},
                            {"carrier_loops", loops}};
    if (!write(signal, true, input))
        return received;
    m_process->write(QJsonDocument(order).toJson(QJsonDocument::Compact) + '\n');
    while (!m_process->canReadLine()) {
        if (!m_process->waitForReadyRead(-1))
            return received;
    }
    m_process->readLine();
    if (!output.open(QIODevice::ReadOnly))
        return received;
    double row[5]; // loop of the carrier, I, Q, position, phase
    while (output.read(reinterpret_cast<char*>(row), sizeof row) == qint64{sizeof row})
        received[static_cast<std::size_t>(row[0])].push_back({{row[1], row[2]}, row[3], row[4]});
    return received;
}

} // namespace

std::unique_ptr<Peer> gnuRadioPeer()
{
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->start("/usr/bin/python3", {ORVANE_PEER_SCRIPT});
    while (!process->canReadLine()) {
        if (!process->waitForReadyRead(-1))
            return nullptr;
    }
    return std::make_unique<GnuRadio>(std::move(process));
}
