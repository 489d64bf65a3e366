// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityPlot.h"
#include "foundations/Export.h"
#include "views/ValueObservingPtr.h"
#include "views/ValuePtr.h"

#include <cstdint>
#include <vector>

/// A density plot that feeds itself from values of the application's value tree, with the roles of
/// the eye and the IQ view:
///
///   role          type                  meaning
///   Data1         ValueList<double>     samples of one notification; of a constellation I
///   Data2         ValueList<double>     Q of a constellation
///   BaudrateData  ValueList<double>     of an eye markers beside the samples: non-zero where a
///   trace
///                                       starts, its value the trace's number of samples
///   HasChanged    Value<bool>           trigger: any new content reads the lists
///
/// A trace may span notifications; the next marker, or its full length, ends it. Traces of another
/// length than the plot's shape are left out as torn. Symbols are numbered from 0 in the order in
/// which they come. Setters answer whether a value of the right type is bound now; setting the
/// trigger reads the lists at once. GUI thread only.
class ORVANE_API VCDensityPlot : public density::DensityPlot, public IObserver
{
    Q_OBJECT
public:
    explicit VCDensityPlot(Kind kind, const density::Counter::Settings& settings = {},
                           QWidget* parent = nullptr);
    ~VCDensityPlot() override;

    bool SetData1_ValuePath(const QString& path);
    bool SetData2_ValuePath(const QString& path);
    bool SetBaudrateData_ValuePath(const QString& path);
    bool SetHasChangedTrigger_ValuePath(const QString& path);

    /// A bound value changed.
    void Update(Observable* source, TChangeCode code) override;

private:
    void feedTraces();
    void feedPoints();
    void endTrace();
    void handOver();

    const bool m_isEye;
    values::ValuePtr<values::ValueList<double>> m_data1, m_data2, m_baudrateData;
    values::ValueObservingPtr<values::Value<bool>> m_hasChangedTrigger;
    std::int64_t m_nextSymbol = 0;
    std::size_t m_traceLength = 0; // that the last marker announced; 0: none is open
    std::vector<double> m_pending; // samples of the open trace
    std::vector<double> m_whole;   // traces that have ended in this notification
};
