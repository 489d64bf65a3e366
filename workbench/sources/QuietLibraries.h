// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

/// While one lives, what the libraries that its thread calls print on standard error goes nowhere:
/// decoders print lines of their own about damaged files. What other threads print comes through.
/// Without install it does nothing.
class QuietLibraries
{
public:
    QuietLibraries();
    ~QuietLibraries();
    QuietLibraries(const QuietLibraries&) = delete;
    QuietLibraries& operator=(const QuietLibraries&) = delete;

    /// Puts a gate before standard error. Call once, while there is one thread.
    static void install();
};
