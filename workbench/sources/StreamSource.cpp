// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/StreamSource.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <poll.h>
#include <unistd.h>

namespace {

constexpr std::size_t maxRead = 1 << 20; // bytes at a time

} // namespace

StreamSource::StreamSource(int descriptor, const SampleFormat& format, double sampleRate)
    : LiveSource(tr("Standard input"), format, sampleRate)
    , m_descriptor(descriptor)
{}

QString StreamSource::peer() const { return tr("standard input"); }

void StreamSource::receive(std::vector<char>& bytes, std::size_t most)
{
    pollfd waiting{m_descriptor, POLLIN, 0};
    const int ready = ::poll(&waiting, 1, static_cast<int>(patience.count()));
    if (ready == 0 || (ready < 0 && errno == EINTR))
        return;
    const std::size_t before = bytes.size();
    bytes.resize(before + std::clamp<std::size_t>(most, 1, maxRead));
    const ssize_t got =
        ready < 0 ? -1 : ::read(m_descriptor, bytes.data() + before, bytes.size() - before);
    const int error = errno;
    bytes.resize(before + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    if (got > 0 || (got < 0 && (error == EINTR || error == EAGAIN)))
        return;
    end();
    setTrouble(got == 0 ? tr("standard input has ended")
                        : tr("standard input cannot be read (%1)")
                              .arg(QString::fromLocal8Bit(std::strerror(error))));
}
