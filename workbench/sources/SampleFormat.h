// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <cstddef>
#include <optional>

/// Format of samples without a header: kind and bits of the numbers, order of their bytes, and
/// whether two of them are I and Q of one complex sample.
struct SampleFormat
{
    enum class Kind { Float, Signed, Unsigned };

    /// Reads the name of a SigMF data type, such as cf32_le, ri16_be or cu8, also in common short
    /// forms: s for i, no r before real ones, no _le.
    static std::optional<SampleFormat> parse(const QString& name);
    /// The format of a file's ending: any of the names above except rf64, and fc32, cfile, iq, c16
    /// and c8.
    static std::optional<SampleFormat> ofEnding(const QString& ending);

    /// The data type's name in SigMF.
    QString name() const;
    /// Number of bytes of a real number.
    std::size_t byteCount() const { return bits / 8; }
    /// Number of real numbers of a sample of one channel: 1 or 2.
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
