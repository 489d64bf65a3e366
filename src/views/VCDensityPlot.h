// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "density/DensityPlot.h"
#include "foundations/Export.h"
#include "views/ValueObservingPtr.h"
#include "views/ValuePtr.h"

#include <cstdint>
#include <vector>

// clang-format off
/// A density plot that feeds itself from values of the application's value tree. It has the roles
/// of the eye or the IQ view:
///
///   role          type               meaning
///   ------------  -----------------  --------------------------------------------------------
///   Data1         ValueList<double>  samples of one notification; of a constellation I
///   Data2         ValueList<double>  constellation: Q samples beside them; the shorter list counts
///   BaudrateData  ValueList<double>  eye: markers beside the samples, non-zero where a trace
///                                    starts, its value the trace's number of samples
///   HasChanged    Value<bool>        trigger: setting it reads the lists, whatever it holds
///
/// A trace may span notifications: it ends at the next marker, or with the notification that
/// completes it. Traces of another length than the plot's shape are left out as torn. Symbols are
/// numbered from 0 in the order in which they come.
///
/// A setter answers whether a value of the right type is bound now. On false the role is unbound,
/// even if it was bound before. Setting the trigger reads the lists at once. GUI thread only.
class ORVANE_API VCDensityPlot : public density::DensityPlot, public IObserver
// clang-format on
{
    Q_OBJECT
public:
    explicit VCDensityPlot(Kind kind, const density::Counter::Settings& settings = {},
                           QWidget* parent = nullptr);
    ~VCDensityPlot() override;

    ///@{
    /// Bind a role to a value, see the table above.
    bool SetData1_ValuePath(const QString& path);
    bool SetData2_ValuePath(const QString& path);
    bool SetBaudrateData_ValuePath(const QString& path);
    bool SetHasChangedTrigger_ValuePath(const QString& path);
    ///@}

    /// Takes the changes of the bound values.
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
