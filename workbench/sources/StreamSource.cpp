// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/StreamSource.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

StreamSource::StreamSource(const QString& name, int descriptor, const SampleFormat& format,
                           double sampleRate)
    : LiveSource(name, format, sampleRate)
    , m_descriptor(descriptor)
{
    // A larger pipe bridges longer pauses of this program; other files do not have this setting.
    fcntl(descriptor, F_SETPIPE_SZ, 1 << 20);
}

bool StreamSource::receive(std::vector<char>& bytes)
{
    pollfd awaited{m_descriptor, POLLIN, 0};
    if (poll(&awaited, 1, static_cast<int>(timeout.count())) <= 0)
        return true;
    const std::size_t old = bytes.size();
    bytes.resize(old + pieceSize);
    const ssize_t count = ::read(m_descriptor, bytes.data() + old, pieceSize);
    const int error = errno;
    bytes.resize(old + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (count > 0 || (count < 0 && (error == EINTR || error == EAGAIN)))
        return true;
    if (count < 0)
        m_end = tr("it cannot be read (%1)").arg(qt_error_string(error));
    else if (!bytes.empty())
        m_end = tr("it ended within a sample (bytes left out: %1): it was cut off, or it is not %2")
                    .arg(bytes.size())
                    .arg(format().name());
    else if (position() == 0)
        m_end = tr("it ended before a sample came; start the program that writes them");
    else
        m_end = tr("it has ended");
    return false;
}

std::optional<Message> StreamSource::amiss() const { return m_end ? m_end : LiveSource::amiss(); }
