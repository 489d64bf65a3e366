// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/receiver/ReceiverSettings.h"
#include "workbench/sources/ChannelChoice.h"
#include "workbench/sources/ModulationSource.h"
#include "workbench/sources/NrzSource.h"
#include "workbench/sources/Recording.h"
#include "workbench/sources/Result.h"
#include "workbench/window/SchemeChoice.h"
#include "workbench/window/panes/ViewExport.h"

#include <QCoreApplication>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

/// The options of the command line.
struct Options
{
    Q_DECLARE_TR_FUNCTIONS(Options)
public:
    static constexpr int minWidth = 640; ///< of the window, pixels
    static constexpr int minHeight = 400;
    static constexpr const char* languagePattern = "[A-Za-z]{2,3}([_-][A-Za-z]{2,4})?";

    /// Reads a command line, whose first entry is the program. A failure names the wrong option:
    /// "what: why; what to do".
    static Result<Options> parse(const QStringList& arguments);
    /// The language of a command line, empty for none; set it before parse, whose texts are
    /// translated.
    static QString languageIn(const QStringList& arguments);

    /// Whether the receiver needs a symbol rate, but none is known.
    /// @param known  that of the recording, Bd.
    bool lacksSymbolRate(std::optional<double> known) const;

    QString answer; ///< help or version, to be printed; empty where neither is asked for
    QString file;   ///< recording; empty for a built-in signal
    Recording::Options recording;
    QStringList files;           ///< to measure
    bool isVersion = false;      ///< only say the version; where verbose, also what draws the views
    bool isVerbose = false;      ///< the log also has usual events
    bool isInfo = false;         ///< only say what the recording is
    bool isMeasure = false;      ///< only print what the recordings measure, as JSON
    bool isDensity = false;      ///< eye and constellation as densities; figures of them
    QString maskFile;            ///< to test the eye against; empty: none
    std::optional<double> start; ///< s, where to start; none: at the beginning
    bool hasSeconds = false;     ///< whether seconds were given
    ChannelChoice channel;
    QString snapshotFolder;                                           ///< empty: none
    double seconds = 2.0;                                             ///< played for a snapshot
    std::vector<ViewExport::Format> formats{ViewExport::Format::Png}; ///< of a snapshot
    std::optional<double> scale; ///< of a snapshot: pixels to one of the window's
    std::optional<double> spanSeconds;
    std::optional<double> symbolRate; ///< Bd, of the recording
    bool isSymbolRateAuto = false;    ///< estimate it instead
    ReceiverSettings receiver;        ///< on where an option asks for one of its stages
    NrzSettings builtIn;
    std::optional<ModulationSettings> demo; ///< none: that of levels
    std::optional<int> eyeSymbolCount;      ///< of a trace; none of these: as kept
    std::optional<double> eyeBandwidth;     ///< as in EyeCut
    bool isTrajectory = false;              ///< see IqFeed
    std::optional<double> speed;            ///< as in SignalFeed
    std::optional<SchemeChoice::Choice> scheme;
    bool isReset = false;      ///< forget the settings
    std::optional<QSize> size; ///< none: as the window was left, at first 1280x800
    QString settingsFile;
};
