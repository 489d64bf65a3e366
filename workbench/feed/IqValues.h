// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/values/Values.h"

#include <list>
#include <vector>

/// The values of the value tree to which an IQ view is bound, as long as this object lives; one
/// object at a time.
class IqValues
{
public:
    /// list: I samples of one notification
    static constexpr const char* iPath = "Workbench/IQ/I";
    /// list: Q samples beside them
    static constexpr const char* qPath = "Workbench/IQ/Q";
    /// switch: set after the lists were written
    static constexpr const char* triggerPath = "Workbench/IQ/Trigger";
    /// numbers: the ends of the axes
    static constexpr const char* xMinPath = "Workbench/IQ/XMin";
    static constexpr const char* xMaxPath = "Workbench/IQ/XMax";
    static constexpr const char* yMinPath = "Workbench/IQ/YMin";
    static constexpr const char* yMaxPath = "Workbench/IQ/YMax";

    IqValues();
    ~IqValues();
    IqValues(const IqValues&) = delete;
    IqValues& operator=(const IqValues&) = delete;

    /// Shows I from -xEnd to xEnd and Q from -yEnd to yEnd.
    void setEnds(double xEnd, double yEnd);
    /// Writes both lists in place and sets the trigger.
    void notify(const std::vector<double>& i, const std::vector<double>& q);

private:
    using List = values::ValueList<double>;
    using Number = values::ValueNumeric<double>;

    List* m_i;
    List* m_q;
    values::Value<bool>* m_trigger;
    Number* m_xMin;
    Number* m_xMax;
    Number* m_yMin;
    Number* m_yMax;
    std::list<double> m_spareI; // nodes for longer notifications
    std::list<double> m_spareQ;
};
