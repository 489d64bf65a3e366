// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/ModulationKind.h"

#include <liquid/liquid.h>

#include <algorithm>
#include <iterator>

namespace {

struct Row
{
    const char* name;
    modulation_scheme scheme;
};
// In the order of ModulationKind.
constexpr Row rows[] = {{"BPSK", LIQUID_MODEM_BPSK},    {"QPSK", LIQUID_MODEM_QPSK},
                        {"8PSK", LIQUID_MODEM_PSK8},    {"16QAM", LIQUID_MODEM_QAM16},
                        {"64QAM", LIQUID_MODEM_QAM64},  {"OQPSK", LIQUID_MODEM_QPSK},
                        {"pi4DQPSK", LIQUID_MODEM_QPSK}};

} // namespace

QString modulationKinds::name(ModulationKind kind)
{
    return QString::fromLatin1(rows[static_cast<int>(kind)].name);
}

QStringList modulationKinds::names(int count)
{
    QStringList result;
    for (const Row& row : rows)
        result += QString::fromLatin1(row.name);
    return result.mid(0, count);
}

std::optional<ModulationKind> modulationKinds::named(const QString& name)
{
    const auto isNamed = [&name](const Row& row) {
        return name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0;
    };
    const auto found = std::find_if(std::begin(rows), std::end(rows), isNamed);
    return found == std::end(rows)
               ? std::nullopt
               : std::optional(static_cast<ModulationKind>(found - std::begin(rows)));
}

LiquidHandle<modemcf_s*> modulationKinds::modem(ModulationKind kind)
{
    return {modemcf_create(rows[static_cast<int>(kind)].scheme), modemcf_destroy};
}

std::vector<std::complex<double>> modulationKinds::points(ModulationKind kind)
{
    const auto modem = modulationKinds::modem(kind);
    std::vector<std::complex<double>> points(std::size_t{1} << modemcf_get_bps(modem.get()));
    for (std::size_t k = 0; k < points.size(); ++k) {
        std::complex<float> point;
        modemcf_modulate(modem.get(), static_cast<unsigned>(k), &point);
        points[k] = point;
    }
    return points;
}
