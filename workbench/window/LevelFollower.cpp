// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/LevelFollower.h"

#include "eye/GLEyeDiagram.h"
#include "iq/GLIQDiagram.h"
#include "platform/glwidgets/XAxisWidget.h"
#include "time/GLTimeDiagram.h"
#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/feed/SignalFeed.h"

namespace {

template<class Diagram>
bool shows(Diagram& diagram, double lowest, double highest)
{
    double start = 0.0;
    double stop = 0.0;
    diagram.GetYStartStop(start, stop);
    return start == lowest && stop == highest;
}

template<class Feed>
void follow(Feed& feed, bool isAsSet, double elapsed)
{
    if (isAsSet || feed.levels().isNew())
        feed.followLevels(elapsed);
}

} // namespace

void LevelFollower::follow()
{
    // What stands still has no time to wait for.
    const double elapsed = m_feed.transport().isPlaying() && m_clock.isValid()
                               ? static_cast<double>(m_clock.elapsed()) * 1e-3
                               : LevelRange::patience;
    m_clock.start();
    const LevelRange& time = m_feed.time().levels();
    const LevelRange& eye = m_feed.eye().levels();
    const IqFeed& iq = m_feed.iq();
    ::follow(m_feed.time(), shows(*m_time.GetDiagram(), time.lowest(), time.highest()), elapsed);
    ::follow(m_feed.eye(), shows(*m_eye.GetDiagram(), eye.lowest(), eye.highest()), elapsed);
    const AxisHandler& i = *m_iq.GetXAxis();
    const bool isAsSet = shows(*m_iq.GetDiagram(), -iq.qEnd(), iq.qEnd()) &&
                         i.GetStartValue() == -iq.iEnd() && i.GetStopValue() == iq.iEnd();
    ::follow(m_feed.iq(), isAsSet, elapsed);
}
