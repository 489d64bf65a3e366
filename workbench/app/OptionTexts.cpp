// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/app/OptionTexts.h"

#include "workbench/receiver/ReceiverSettings.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <functional>

namespace {

using Add = std::function<void(const char* name, const QString& text, const char* value)>;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(Options)
};

void describeSignals(const Add& add)
{
    add("format",
        Text::tr("Takes the file, standard input or messages for raw samples of <NAME>: cf32, "
                 "cs16, cu8, cs8, rf32, rs16 and so on, _be for big endian; else endings such as "
                 ".cu8 say it, and messages are cf32."),
        "NAME");
    add("sample-rate", Text::tr("Sample rate in hertz, whatever the recording says."), "HZ");
    add("columns",
        Text::tr("Takes the file for separated values and plays its columns <LIST>, numbers from 1 "
                 "or names between commas; else all columns of numbers but the time."),
        "LIST");
    add("info", Text::tr("Prints what is known of the recording and ends."), nullptr);
    add("measure",
        Text::tr("Prints what the recordings measure and ends: json, a line for each; all of a "
                 "recording unless --start and --seconds say otherwise."),
        "FORMAT");
    add("mask",
        Text::tr("Tests the eye, as a density, against the mask in <FILE>; with --measure or "
                 "--snapshot ends with 3 where it does not pass."),
        "FILE");
    add("density",
        Text::tr("Shows how often all symbols passed where, instead of the diagrams of eye and "
                 "constellation; with --measure prints the figures of that eye, too."),
        nullptr);
    add("start", Text::tr("Starts <S> seconds after the beginning of the recording."), "S");
    add("channel",
        Text::tr("Plays channel <N> of the recording, counted from 1, or the difference of two, "
                 "such as 1-2; of a complex one 1 is I, 2 is Q."),
        "N");
    add("symbol-rate",
        Text::tr("Symbol rate in hertz: the time axis counts symbols, and the eye opens on them; "
                 "auto estimates that of a recording."),
        "HZ");
}

void describeReceiver(const Add& add)
{
    add("shift", Text::tr("Receiver: adds <HZ> to every frequency of the recording."), "HZ");
    add("bandwidth", Text::tr("Receiver: lets a channel of <HZ> about 0 through."), "HZ");
    add("squelch",
        Text::tr("Receiver: shows nothing while the channel is below <DB> dB of full scale."),
        "DB");
    add("demod", Text::tr("Receiver: demodulates fm or am instead of I and Q."), "NAME");
    add("roll-off",
        Text::tr("Receiver: root raised cosine matched filter of roll-off <X>; 0 for none (0.35 "
                 "with --modulation, else none)."),
        "X");
    add("filter",
        Text::tr("Receiver: measuring filter <NAME>: rrc, rc, gaussian, boxcar or half-sine; "
                 "--roll-off is the roll-off of rrc and rc, and the BT of gaussian."),
        "NAME");
    add("remove-dc", Text::tr("Receiver: takes off what is at 0 Hz."), nullptr);
    add("modulation",
        Text::tr("Receiver: recovers symbols and carrier of <NAME>: %1, at --symbol-rate.")
            .arg(modulationKinds::names().join(QStringLiteral(", "))),
        "NAME");
    add("no-agc", Text::tr("Receiver: leaves the gain as it is."), nullptr);
    add("no-timing", Text::tr("Receiver: leaves the symbols where they are."), nullptr);
}

void describeViews(const Add& add)
{
    add("trajectory", Text::tr("Shows the way between symbols, too, in the IQ diagram."), nullptr);
    add("eye-symbols", Text::tr("Shows <N> symbols in the eye, 1 to 16 (2)."), "N");
    add("eye-bandwidth",
        Text::tr("Low-pass before the eye, 3 dB down at <X> symbol rates, 0.2 to 2 (none)."), "X");
    add("characters",
        Text::tr("Takes the recording for an asynchronous serial line, such as a UART's: the eye "
                 "follows each start bit, with <N> bits after it, 5 to 9, at --symbol-rate."),
        "N");
    add("demo",
        Text::tr(
            "Plays the built-in signal <NAME>: BPSK, QPSK, 8PSK, 16QAM or 64QAM, as a receiver "
            "has it, or NRZ, of two or four levels (QPSK)."),
        "NAME");
    add("snr", Text::tr("Signal-to-noise ratio of a symbol of it, 0 to 60 dB (28)."), "DB");
    add("levels", Text::tr("Levels of the built-in NRZ signal: 2 or 4 (2)."), "N");
    add("noise",
        Text::tr("Noise of the built-in NRZ signal, RMS in dB of its level, -60 to 6 (-26)."),
        "DB");
    add("jitter",
        Text::tr("Jitter of the built-in NRZ signal, RMS in unit intervals, 0 to 0.3 (0)."), "UI");
    add("span", Text::tr("Shows <S> seconds of signal."), "S");
    add("speed",
        Text::tr("Plays <X> seconds of signal in a second, 1e-9 to 10; max: as fast as it goes."),
        "X");
}

void describeSnapshots(const Add& add)
{
    add("snapshot",
        Text::tr("Plays without a window, writes time.png, eye.png, iq.png and workbench.png into "
                 "<DIR> and ends."),
        "DIR");
    add("formats",
        Text::tr("Files of a snapshot: any of png,svg,pdf,csv,npy; pictures and data of each view "
                 "(png), npy of densities. The data of a view that has none are left out."),
        "LIST");
    add("scale", Text::tr("Pixels of a snapshot to each of the window, 0.5 to 8 (1)."), "X");
    add("seconds", Text::tr("Plays <S> seconds for a snapshot (2)."), "S");
    add("size", Text::tr("Size of the window in pixels (1280x800)."), "WxH");
    add("scheme", Text::tr("Colour scheme: dark, light or, as without it, as the desktop."),
        "NAME");
    add("language", Text::tr("Language of the texts, such as de."), "L");
    add("settings", Text::tr("Keeps settings in <FILE>."), "FILE");
    add("reset", Text::tr("Forgets the settings, and starts as at the first time."), nullptr);
}

} // namespace

void optionTexts::describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        Text::tr("Shows a signal over time, as an eye and as a constellation: a recording, "
                 "or a built-in signal when no file is given."));
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, Text::tr("Shows this help.")});
    parser.addOption(
        {{QStringLiteral("v"), QStringLiteral("version")}, Text::tr("Shows the version.")});
    parser.addOption({QStringLiteral("verbose"),
                      Text::tr("Says more: what draws the views, and why; with --version, too.")});
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 Text::tr("Recording to play: SigMF, WAV, FLAC, AIFF and others, "
                                          "CSV, raw samples. Or a live signal: - for standard "
                                          "input, zmq://HOST:PORT, a ZeroMQ publisher, or "
                                          "soapy://driver=NAME,freq=HZ,rate=HZ,gain=DB, a radio."),
                                 QStringLiteral("[FILE]"));
    const Add add = [&parser](const char* name, const QString& text, const char* value) {
        parser.addOption({QString::fromLatin1(name), text, QString::fromLatin1(value)});
    };
    describeSignals(add);
    describeReceiver(add);
    describeViews(add);
    describeSnapshots(add);
}
