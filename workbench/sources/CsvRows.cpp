// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#include "workbench/sources/CsvRows.h"

#include <csv.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

namespace {

void* allocate(void* old, std::size_t size)
{
    return size <= CsvRows::maxRowSize ? std::realloc(old, size) : nullptr;
}

} // namespace

struct CsvRows::Parser : csv_parser
{
    explicit Parser(char separator)
        : csv_parser()
    {
        csv_init(this, 0);
        csv_set_delim(this, static_cast<unsigned char>(separator));
        csv_set_realloc_func(this, allocate);
    }
    ~Parser() { csv_free(this); }
};

std::string_view CsvRows::Row::cell(std::size_t index) const
{
    if (index >= size())
        return {};
    const std::size_t begin = index == 0 ? 0 : m_ends[index - 1];
    return std::string_view(m_text).substr(begin, m_ends[index] - begin);
}

std::optional<double> CsvRows::Row::number(std::size_t index) const
{
    std::string_view text = cell(index);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    std::string withPoint;
    if (const std::size_t comma = text.find(','); comma != std::string_view::npos) {
        withPoint = text;
        withPoint[comma] = '.';
        text = withPoint;
    }
    const char* const end = text.data() + text.size();
    double value = 0.0;
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ptr != end || result.ec == std::errc::invalid_argument)
        return std::nullopt;
    // A number that is too small is 0.
    const bool isHuge = result.ec == std::errc::result_out_of_range &&
                        text.find_first_of("eE") + 1 != text.find('-', 1);
    if (isHuge)
        value = std::copysign(std::numeric_limits<double>::infinity(), text[0] == '-' ? -1.0 : 1.0);
    return value;
}

CsvRows::CsvRows(char separator, Taker taker)
    : m_parser(std::make_unique<Parser>(separator))
    , m_mergesSeparators(separator == ' ')
    , m_taker(std::move(taker))
{}

CsvRows::~CsvRows() = default;

bool CsvRows::take(const char* bytes, std::size_t count)
{
    const auto onCell = [](void* text, std::size_t size, void* rows) {
        static_cast<CsvRows*>(rows)->endCell(static_cast<const char*>(text), size);
    };
    const auto onRow = [](int, void* rows) { static_cast<CsvRows*>(rows)->endRow(); };
    for (std::size_t done = 0; done < count && !m_isBroken;) {
        const std::size_t step = std::min(count - done, maxRowSize);
        m_size += step;
        m_isBroken = csv_parse(m_parser.get(), bytes + done, step, onCell, onRow, this) != step ||
                     m_size > maxRowSize;
        done += step;
    }
    return !m_isBroken;
}

void CsvRows::finish()
{
    const char end = '\n';
    take(&end, 1);
}

bool CsvRows::isBetweenRows() const
{
    return m_parser->pstate == 0; // libcsv: row not begun
}

void CsvRows::endCell(const char* bytes, std::size_t count)
{
    if (m_row.size() == maxCellCount || (m_mergesSeparators && count == 0))
        return;
    m_row.m_text.append(bytes, count);
    m_row.m_ends.push_back(m_row.m_text.size());
}

void CsvRows::endRow()
{
    if (m_row.size() > 0)
        m_taker(m_row);
    m_row.m_text.clear();
    m_row.m_ends.clear();
    m_size = 0;
}
