// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Splits text with separated values, which comes in pieces of any size, into rows of cells.
class CsvRows
{
public:
    static constexpr std::size_t maxRowSize = 1 << 20; ///< bytes
    static constexpr std::size_t maxCellCount = 1024;  ///< of a row; further ones are left out

    class Row
    {
    public:
        std::size_t size() const { return m_ends.size(); }
        /// A cell without quotes and without spaces around it; empty when the row has fewer cells.
        std::string_view cell(std::size_t index) const;
        /// A cell's number, with a decimal point or a decimal comma; may be NaN or infinite.
        std::optional<double> number(std::size_t index) const;

    private:
        friend class CsvRows;
        std::string m_text;
        std::vector<std::size_t> m_ends;
    };
    /// Gets each row that has cells. The row is valid during the call.
    using Taker = std::function<void(const Row&)>;

    /// @param separator  of cells; where it is a space, several of them separate like one.
    CsvRows(char separator, Taker taker);
    ~CsvRows();

    /// Splits the next bytes. Returns false, from then on always, when a row, or the blank rows
    /// before it, are too long.
    bool take(const char* bytes, std::size_t count);
    /// Ends the last row if no line end did.
    void finish();
    bool isBetweenRows() const;

private:
    struct Parser;
    void endCell(const char* bytes, std::size_t count);
    void endRow();

    std::unique_ptr<Parser> m_parser;
    bool m_mergesSeparators;
    bool m_isBroken = false;
    Taker m_taker;
    Row m_row;
    std::size_t m_size = 0; // taken since the last row, bytes
};
