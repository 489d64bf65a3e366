// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QElapsedTimer>

class SignalFeed;
class VCGLEyeDiagram;
class VCGLIQDiagram;
class VCGLTimeDiagram;

/// Keeps the axes of levels fitted to the shown signal. An axis that the user zoomed, dragged or
/// set stays so until the levels are fitted again, or its zoom is reset.
class LevelFollower
{
public:
    /// All outlive it.
    LevelFollower(SignalFeed& feed, VCGLTimeDiagram& time, VCGLEyeDiagram& eye, VCGLIQDiagram& iq)
        : m_feed(feed)
        , m_time(time)
        , m_eye(eye)
        , m_iq(iq)
    {}

    /// Follows the shown signal; call it a few times a second while that changes.
    void follow();

private:
    SignalFeed& m_feed;
    VCGLTimeDiagram& m_time;
    VCGLEyeDiagram& m_eye;
    VCGLIQDiagram& m_iq;
    QElapsedTimer m_clock; // since the last look
};
