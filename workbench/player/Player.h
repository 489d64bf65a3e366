// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/feed/SignalFeed.h"
#include "workbench/sources/ModulationSource.h"
#include "workbench/sources/NrzSource.h"
#include "workbench/sources/Recording.h"

#include <QObject>
#include <QStringList>

#include <optional>

/// The signal that the window shows: opens it, changes what can be set of it, and knows what is
/// amiss with it. Without a widget.
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
    /// @return why it cannot be shown; the former signal stays then.
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
    /// Acts on the built-in signal at once where it plays, or else when it is opened. Where other
    /// symbols come it is opened anew.
    void setBuiltIn(const NrzSettings& settings);

    /// Settings of the built-in signal with a modulation.
    const ModulationSettings& demo() const { return m_demo; }
    /// Acts on it likewise; its modulation and its rate count when it is opened.
    void setDemo(const ModulationSettings& settings);

    /// @param symbolRate  Bd; 0: what the source says.
    void setSymbolRate(double symbolRate);
    /// The symbol rate that was told last is an estimate, 0 to 1 sure.
    void setConfidence(double confidence) { m_confidence = confidence; }
    /// Asks for an estimate where the symbol rate of a recording is not known, from now on.
    void setEstimating(bool wanted) { m_isEstimating = wanted; }
    /// Receives recordings and streams so from now on.
    void setReceiver(const ReceiverSettings& settings);
    void setChannel(const ChannelChoice& channel);
    void setSpan(double seconds);
    void setCountingSymbols(bool wanted); ///< As in SignalFeed.
    /// Clamped to what the transport plays; Transport::fastest, too.
    void setSpeed(double speed);
    /// Goes back to the start.
    void rewind();
    /// Goes to a time, s. While paused what is there is played at once, up to that time.
    void seek(double seconds);
    /// The gate is the stretch between two times, s, and is shown at once. Nothing for a live
    /// signal.
    /// @param span  shown over time, s; none: all of it.
    void fixGate(double from, double to, std::optional<double> span = std::nullopt);
    /// Sets one of its edges at the present time, the other one where it was, or as far off as is
    /// shown; or both to the ends of the signal.
    void gateFromHere();
    void gateToHere();
    void gateAll();
    /// Plays the fixed gate from its start to its end, at once.
    void playGate();
    /// Lets the gate follow the time view.
    void releaseGate();
    /// Settings that measuring the gate takes.
    Measurement::Setup setup() const;
    /// As in EyeCut.
    void setEye(int symbolCount, double bandwidth);
    void setTrajectory(bool wanted); ///< As in IqFeed.
    /// Fits the levels' axes to what is shown, and lets them follow it.
    void fitLevels();
    /// Shows the full scale of recordings.
    void showFullScale();

    /// Keeps in the settings file what was set and is of use with other signals, too: eye, speed,
    /// repeat, and the span for signals of the same sample rate.
    void keep() const;
    /// Sets what was kept.
    void restore();

    /// Facts about the signal as it was opened, a line each.
    const QStringList& information() const { return m_information; }
    /// Whether the symbol rate gives an eye, where one is known.
    Result<void> checkEye() const;

signals:
    /// Another signal is there; the notices are of its recording, a sentence each.
    void opened(const QStringList& notices);
    /// Something was set that is shown elsewhere, too.
    void changed();
    /// The symbols' clock is another one.
    void clockChanged();
    /// Earlier samples would look different now: play them again...
    void outdated();
    /// ...or only show them again.
    void lookChanged();
    /// The gate was fixed, and is to be played.
    void gateFixed();
    /// The symbol rate is not known: it is to be estimated, and taken where that is sure.
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
    NrzSource* m_builtInSource = nullptr; // the feed's; null while something else plays
    ModulationSource* m_demoSource = nullptr;
    Kind m_kind = Kind::BuiltIn;
    QStringList m_information;
    bool m_isEstimating = false;
    std::optional<double> m_confidence; // of the symbol rate that was told, where it is an estimate
    double m_keptSpan = 0.0;            // s, as the user chose it...
    double m_keptSpeed = 1.0;           // of signals that are not over in less than a second
    double m_keptSpanRate = 0.0;        // ...for this sample rate, Hz
};
