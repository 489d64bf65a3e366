// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Values.h"

#include <list>
#include <vector>

/// The values of the value tree to which a time view is bound, as long as this object lives; one
/// object at a time.
class TimeValues
{
public:
    /// list: samples of one notification
    static constexpr const char* samplesPath = "Workbench/Time/Samples";
    /// list: beside them, the length of each segment that starts
    static constexpr const char* markersPath = "Workbench/Time/Markers";
    /// switch: set after the lists were written
    static constexpr const char* triggerPath = "Workbench/Time/Trigger";
    /// number: oldest time shown, T, < 0
    static constexpr const char* xMinPath = "Workbench/Time/XMin";
    /// number: newest time shown, 0
    static constexpr const char* xMaxPath = "Workbench/Time/XMax";
    /// number: lowest level shown
    static constexpr const char* yMinPath = "Workbench/Time/YMin";
    /// number: highest level shown
    static constexpr const char* yMaxPath = "Workbench/Time/YMax";
    /// number: samples of T
    static constexpr const char* baudratePath = "Workbench/Time/Baudrate";

    TimeValues();
    ~TimeValues();
    TimeValues(const TimeValues&) = delete;
    TimeValues& operator=(const TimeValues&) = delete;

    void setX(double minimum, double maximum);
    void setY(double minimum, double maximum);
    void setBaudrate(double samplesPerUnit);
    /// Writes both lists in place and sets the trigger. List nodes are kept when a notification is
    /// shorter than the last one, so that a steady stream allocates nothing. A value that is not
    /// finite is replaced by a neighbour, because the diagram cannot bound a trace with it.
    /// @param samples  whose values may be replaced.
    void notify(std::vector<double>& samples, const std::vector<double>& markers);

private:
    void bridge(std::vector<double>& samples);

    using List = values::ValueList<double>;
    using Number = values::ValueNumeric<double>;

    List* m_samples;
    List* m_markers;
    values::Value<bool>* m_trigger;
    Number* m_xMin;
    Number* m_xMax;
    Number* m_yMin;
    Number* m_yMax;
    Number* m_baudrate;
    double m_level = 0.0;             // that replaces values that are not finite
    std::list<double> m_spareSamples; // nodes for longer notifications
    std::list<double> m_spareMarkers;
    std::vector<double> m_written; // markers
};
