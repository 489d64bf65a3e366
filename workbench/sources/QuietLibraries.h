// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

/// Discards what its thread prints on standard error as long as it lives: decoders print lines of
/// their own about damaged files. What other threads print comes through. Does nothing without
/// install.
class QuietLibraries
{
public:
    QuietLibraries();
    ~QuietLibraries();
    QuietLibraries(const QuietLibraries&) = delete;
    QuietLibraries& operator=(const QuietLibraries&) = delete;

    /// Puts a filter before standard error. Call it once, while there is one thread only.
    static void install();
};
