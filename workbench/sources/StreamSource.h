// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiveSource.h"

/// Samples of one format that another program writes into a pipe, as fast or slow as it likes.
class StreamSource : public LiveSource
{
    Q_DECLARE_TR_FUNCTIONS(StreamSource)
public:
    /// @param descriptor  an open file; it is not closed.
    StreamSource(const QString& name, int descriptor, const SampleFormat& format,
                 double sampleRate);

protected:
    bool receive(std::vector<char>& bytes) override;
    std::optional<Message> amiss() const override;

private:
    const int m_descriptor;
    std::optional<Message> m_end; // why no more can come
};
