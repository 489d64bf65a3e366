// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "platform/glwidgets/AxisHandler.h"

#include <algorithm>
#include <cmath>

namespace {

bool isSame(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// A zoom must leave enough digits to tell the pixels between the ends apart.
bool isFineEnough(double start, double stop)
{
    const double span = std::fabs(stop - start);
    return std::isfinite(span) && span > 1e-12 * std::max(std::fabs(start), std::fabs(stop)) &&
           span > 1e-300;
}

} // namespace

AxisHandler::AxisHandler(axisDefinition::Orientation orientation)
    : m_pixelMap(std::make_shared<values::PixelMap>(orientation))
{
    m_pixelMap->GetAxisDefinition().SetRange(m_programStart, m_programStop);
}

AxisHandler::~AxisHandler() = default;

double AxisHandler::GetStartValue() const { return m_pixelMap->GetAxisDefinition().GetStart(); }

double AxisHandler::GetStopValue() const { return m_pixelMap->GetAxisDefinition().GetStop(); }

void AxisHandler::SetStartValue(double start)
{
    m_programStart = start;
    Apply(start, GetStopValue());
}

void AxisHandler::SetStopValue(double stop)
{
    m_programStop = stop;
    Apply(GetStartValue(), stop);
}

void AxisHandler::SetRange(double start, double stop)
{
    m_programStart = start;
    m_programStop = stop;
    Apply(start, stop);
}

double AxisHandler::PixelToValue(int pixel) const
{
    return m_pixelMap->GetAxisDefinition().PixelToValue(pixel);
}

int AxisHandler::ValueToPixel(double value) const
{
    return m_pixelMap->GetAxisDefinition().ValueToPixel(value);
}

std::shared_ptr<values::PixelMap> AxisHandler::XPixelMap() const { return m_pixelMap; }

void AxisHandler::SetLength(int pixels) { m_pixelMap->GetAxisDefinition().SetLength(pixels); }

void AxisHandler::JoinZooms(const std::shared_ptr<AxisHandler>& one,
                            const std::shared_ptr<AxisHandler>& other)
{
    one->m_partner = other;
    other->m_partner = one;
}

void AxisHandler::ZoomAt(int pixel, double factor, Zooms zooms)
{
    if (!m_pixelMap->GetAxisDefinition().IsUsable())
        return;
    const Range range = ZoomedAbout(PixelToValue(pixel), factor);
    auto partner = Partner(zooms);
    if (partner && !partner->m_pixelMap->GetAxisDefinition().IsUsable())
        partner.reset();
    const Range others = partner ? partner->ZoomedAbout(partner->Middle(), factor) : range;
    if (!isFineEnough(range.start, range.stop) || !isFineEnough(others.start, others.stop))
        return;
    Apply(range.start, range.stop); // whose observers may destroy the axis
    if (partner)
        partner->Apply(others.start, others.stop);
}

double AxisHandler::Middle() const
{
    return GetStartValue() + (GetStopValue() - GetStartValue()) / 2.0;
}

AxisHandler::Range AxisHandler::ZoomedAbout(double value, double factor) const
{
    return {value + (GetStartValue() - value) * factor, value + (GetStopValue() - value) * factor};
}

std::shared_ptr<AxisHandler> AxisHandler::Partner(Zooms zooms) const
{
    return zooms == Zooms::Joined ? m_partner.lock() : nullptr;
}

void AxisHandler::PanFrom(double start, double stop, int fromPixel, int toPixel)
{
    if (!m_pixelMap->GetAxisDefinition().IsUsable())
        return;
    const double shift = PixelToValue(fromPixel) - PixelToValue(toPixel);
    if (isFineEnough(start + shift, stop + shift))
        Apply(start + shift, stop + shift);
}

void AxisHandler::ResetZoom(Zooms zooms)
{
    const auto partner = Partner(zooms);
    Apply(m_programStart, m_programStop);
    if (partner)
        partner->Apply(partner->m_programStart, partner->m_programStop);
}

bool AxisHandler::IsZoomed() const
{
    return !isSame(GetStartValue(), m_programStart) || !isSame(GetStopValue(), m_programStop);
}

void AxisHandler::Apply(double start, double stop)
{
    if (isSame(start, GetStartValue()) && isSame(stop, GetStopValue()))
        return;
    m_pixelMap->GetAxisDefinition().SetRange(start, stop);
    RequestRepaint();
    Notify(ccContent); // last: an observer may destroy the axis
}
