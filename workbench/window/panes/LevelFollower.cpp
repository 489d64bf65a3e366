// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/window/panes/LevelFollower.h"

#include "views/VCGLEyeDiagram.h"
#include "views/VCGLIQDiagram.h"
#include "views/VCGLTimeDiagram.h"
#include "workbench/feed/SignalFeed.h"

#include <utility>

namespace {

template<class Feed>
void follow(Feed& feed, bool isAsSet, double elapsed)
{
    if (isAsSet || feed.levels().isNew())
        feed.followLevels(elapsed);
}

} // namespace

void LevelFollower::follow()
{
    // A signal that stands still does not have to wait.
    const double elapsed = m_feed.transport().isPlaying() && m_clock.isValid()
                               ? static_cast<double>(m_clock.elapsed()) * 1e-3
                               : LevelRange::shrinkDelay;
    m_clock.start();
    const LevelRange& time = m_feed.time().levels();
    const LevelRange& eye = m_feed.eye().levels();
    const IqFeed& iq = m_feed.iq();
    ::follow(m_feed.time(), m_time.GetYAxisRange() == std::pair(time.lowest(), time.highest()),
             elapsed);
    ::follow(m_feed.eye(), m_eye.GetYAxisRange() == std::pair(eye.lowest(), eye.highest()),
             elapsed);
    const bool isAsSet = m_iq.GetYAxisRange() == std::pair(-iq.qEnd(), iq.qEnd()) &&
                         m_iq.GetXAxisRange() == std::pair(-iq.iEnd(), iq.iEnd());
    ::follow(m_feed.iq(), isAsSet, elapsed);
}
