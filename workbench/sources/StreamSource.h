// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "workbench/sources/LiveSource.h"

/// Samples that another program writes into a pipe, such as standard input.
class StreamSource : public LiveSource
{
    Q_DECLARE_TR_FUNCTIONS(StreamSource)
public:
    /// @param descriptor  to read from; stays open.
    StreamSource(int descriptor, const SampleFormat& format, double sampleRate);

private:
    void receive(std::vector<char>& bytes, std::size_t most) override;
    QString peer() const override;

    int m_descriptor;
};
