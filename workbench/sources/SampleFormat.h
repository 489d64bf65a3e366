// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <cstddef>
#include <optional>

/// How samples without a header lie in a file: what the numbers are, how many bits they have, the
/// order of their bytes, and whether two of them are I and Q of one complex sample.
struct SampleFormat
{
    enum class Kind { Float, Signed, Unsigned };

    /// Reads a name such as cf32_le, ri16_be or cu8, the data types of SigMF. Also common short
    /// ones: s for i; no r before real ones; no _le, which is what is meant then.
    static std::optional<SampleFormat> parse(const QString& name);
    /// What a file's ending says: any of the names above but rf64, and fc32, cfile, iq, c16 and c8.
    static std::optional<SampleFormat> ofEnding(const QString& ending);

    /// The data type's name in SigMF.
    QString name() const;
    /// Bytes of a number.
    std::size_t byteCount() const { return bits / 8; }
    /// Real numbers of a sample of one channel.
    int valueCount() const { return isComplex ? 2 : 1; }
    /// Converts bytes to numbers. Signed ones are divided by 2^(bits - 1): 16 bits by 32768.
    /// Unsigned ones reach from -1 to 1 about the middle of their range: 8 bits about 127.5.
    /// Floating point ones stay as they are.
    void convert(const char* bytes, std::size_t count, double* values) const;

    Kind kind = Kind::Float;
    unsigned bits = 32; ///< 8, 16, 32 or 64; floating point 32 or 64
    bool isComplex = false;
    bool isBigEndian = false;
};
