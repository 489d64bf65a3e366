// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/SignalFeed.h"
#include "workbench/sources/ModulationSource.h"
#include "workbench/sources/NrzSource.h"
#include "workbench/sources/Recording.h"

#include <QObject>
#include <QStringList>

#include <optional>

/// The signal that the window shows: opens it, changes its settings, and knows its problems.
/// Without a widget.
class Player : public QObject
{
    Q_OBJECT
public:
    explicit Player(QObject* parent = nullptr);
    ~Player() override;

    SignalFeed& feed() { return m_feed; }
    const SignalFeed& feed() const { return m_feed; }

    /// Takes over a recording, not playing.
    /// @param recording   has a source.
    /// @param symbolRate  Bd; none: the time axis shows seconds or parts of them.
    /// @return why it cannot be shown; then the former signal stays.
    Result<void> open(Recording recording, const ChannelChoice& channel,
                      std::optional<double> symbolRate);
    enum class Kind { Recording, BuiltIn, Demo };
    /// Kind of the signal that plays.
    Kind kind() const { return m_kind; }
    /// Opens the built-in signal, not playing.
    void openBuiltIn(const NrzSettings& settings);
    /// Opens a built-in signal with a modulation, not playing.
    void openDemo(const ModulationSettings& settings);

    /// Settings of the built-in signal, also while another signal plays.
    const NrzSettings& builtIn() const { return m_builtIn; }
    /// Changes the built-in signal at once if it plays, otherwise when it is opened. If its symbols
    /// change, it is opened again.
    void setBuiltIn(const NrzSettings& settings);

    /// Settings of the built-in signal with a modulation.
    const ModulationSettings& demo() const { return m_demo; }
    /// Changes it likewise; modulation and rate take effect when it is opened.
    void setDemo(const ModulationSettings& settings);

    /// @param symbolRate  Bd; 0: that of the source.
    void setSymbolRate(double symbolRate);
    /// Marks the symbol rate that was set last as an estimate with a confidence of 0 to 1.
    void setConfidence(double confidence) { m_confidence = confidence; }
    /// Sets whether to ask for an estimate when the symbol rate of a recording is not known.
    void setEstimating(bool wanted) { m_isEstimating = wanted; }
    /// Sets how recordings and streams are received from now on.
    void setReceiver(const ReceiverSettings& settings);
    void setChannel(const ChannelChoice& channel);
    void setSpan(double seconds);
    void setCountingSymbols(bool wanted); ///< As in SignalFeed.
    /// Sets the speed, clamped to what the transport can play; Transport::fastest is allowed.
    void setSpeed(double speed);
    /// Goes back to the start.
    void rewind();
    /// Goes to a time, s. While paused, plays the signal up to that time at once.
    void seek(double seconds);
    /// Fixes the gate between two times, s, and shows it at once. Does nothing with a live signal.
    /// @param span  of the time view, s; none: the whole gate.
    void fixGate(double from, double to, std::optional<double> span = std::nullopt);
    /// Moves one edge of the gate to the present time, and leaves the other one where it was, or
    /// puts it at the other end of the shown time; or moves both to the ends of the signal.
    void gateFromHere();
    void gateToHere();
    void gateAll();
    /// Plays the fixed gate from its start to its end, at once.
    void playGate();
    /// Lets the gate follow the time view.
    void releaseGate();
    /// Settings for measuring the gate.
    Measurement::Setup setup() const;
    /// Sets how the eye is cut, see EyeCut.
    void setEye(int symbolCount, double bandwidth);
    void setTrajectory(bool wanted); ///< As in IqFeed.
    /// Fits the levels' axes to what is shown, and lets them follow it.
    void fitLevels();
    /// Shows the full scale of recordings.
    void showFullScale();

    /// Saves, in the settings file, settings that are useful with other signals: eye, speed,
    /// repeat, and the span for signals of the same sample rate.
    void keep() const;
    /// Restores these settings.
    void restore();

    /// Facts about the signal when it was opened, one line each.
    const QStringList& information() const { return m_information; }
    /// Checks that the symbol rate, if it is known, gives an eye.
    Result<void> checkEye() const;

signals:
    /// Another signal was opened; the notices of its recording are a sentence each.
    void opened(const QStringList& notices);
    /// A setting has changed that is also shown elsewhere.
    void changed();
    /// The symbol clock has changed.
    void clockChanged();
    /// Earlier samples would look different now: play them again.
    void outdated();
    /// Earlier samples have to be shown again.
    void lookChanged();
    /// The gate was fixed, and has to be played.
    void gateFixed();
    /// The symbol rate is not known: estimate it, and use a sure estimate.
    void symbolRateMissed();

private:
    void start(std::unique_ptr<SignalSource> source, Kind kind, const ChannelChoice& channel,
               std::optional<double> symbolRate);
    void restartBuiltIn();
    void showAsNew(const QStringList& notices);
    void missSymbolRate();

    SignalFeed m_feed;
    NrzSettings m_builtIn;
    ModulationSettings m_demo;
    NrzSource* m_builtInSource = nullptr; // owned by the feed; null while something else plays
    ModulationSource* m_demoSource = nullptr;
    Kind m_kind = Kind::BuiltIn;
    QStringList m_information;
    bool m_isEstimating = false;
    std::optional<double> m_confidence; // of the symbol rate, if it is an estimate
    double m_keptSpan = 0.0;            // s, as the user chose it...
    double m_keptSpeed = 1.0;           // for signals of at least a second
    double m_keptSpanRate = 0.0;        // ...for this sample rate, Hz
};
