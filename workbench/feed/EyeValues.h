// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Values.h"

#include <list>
#include <vector>

/// The values of the value tree to which an eye view is bound, as long as this object lives; one
/// object at a time. An eye view sets its X axis itself and needs no baud rate.
class EyeValues
{
public:
    /// list: samples of whole segments; a segment ends with the sample that the next one starts
    /// with
    static constexpr const char* samplesPath = "Workbench/Eye/Samples";
    /// list: beside them, the length of each segment that starts
    static constexpr const char* markersPath = "Workbench/Eye/Markers";
    /// switch: set after the lists were written
    static constexpr const char* triggerPath = "Workbench/Eye/Trigger";
    /// number: lowest level shown
    static constexpr const char* yMinPath = "Workbench/Eye/YMin";
    /// number: highest level shown
    static constexpr const char* yMaxPath = "Workbench/Eye/YMax";

    EyeValues();
    ~EyeValues();
    EyeValues(const EyeValues&) = delete;
    EyeValues& operator=(const EyeValues&) = delete;

    void setY(double minimum, double maximum);
    /// Writes both lists in place and sets the trigger once.
    void notify(const std::vector<double>& samples, const std::vector<double>& markers);

private:
    using List = values::ValueList<double>;
    using Number = values::ValueNumeric<double>;

    List* m_samples;
    List* m_markers;
    values::Value<bool>* m_trigger;
    Number* m_yMin;
    Number* m_yMax;
    std::list<double> m_spareSamples; // nodes for longer notifications
    std::list<double> m_spareMarkers;
    std::vector<double> m_written; // markers
};
