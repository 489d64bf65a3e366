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
    // A pipe that holds more bridges a longer pause of ours; others do not have it.
    fcntl(descriptor, F_SETPIPE_SZ, 1 << 20);
}

bool StreamSource::receive(std::vector<char>& bytes)
{
    pollfd awaited{m_descriptor, POLLIN, 0};
    if (poll(&awaited, 1, static_cast<int>(patience.count())) <= 0)
        return true;
    const std::size_t old = bytes.size();
    bytes.resize(old + pieceSize);
    const ssize_t count = ::read(m_descriptor, bytes.data() + old, pieceSize);
    const int error = errno;
    bytes.resize(old + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (count > 0 || (count < 0 && (error == EINTR || error == EAGAIN)))
        return true;
    if (count < 0)
        m_end = tr("%1 cannot be read (%2)").arg(name(), qt_error_string(error));
    else if (!bytes.empty())
        m_end = tr("%1 ended within a sample (bytes left out: %2): it was cut off, or it is not %3")
                    .arg(name())
                    .arg(bytes.size())
                    .arg(format().name());
    else if (position() == 0)
        m_end = tr("%1 ended before a sample came; start the program that writes them").arg(name());
    else
        m_end = tr("%1 has ended").arg(name());
    return false;
}

QString StreamSource::amiss() const { return m_end.isEmpty() ? LiveSource::amiss() : m_end; }
