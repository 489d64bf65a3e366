// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <vector>

/// Trace history of a diagram: the records of the newest data sets, newest first, and a stack of
/// free records. The lists own their records; each record is in exactly one of them. Only
/// freeHistory frees records, so that a steady stream of data allocates nothing.
namespace traceHistory {

/// Puts a record at the front of the history: the one recycled last, or a new one. A recycled
/// record keeps its old content.
template<class Record>
Record* addRecord(std::vector<Record*>& records, std::vector<Record*>& freeRecords)
{
    if (freeRecords.empty()) {
        auto record = std::unique_ptr<Record>(new Record);
        records.insert(records.begin(), record.get());
        return record.release();
    }
    records.insert(records.begin(), freeRecords.back());
    freeRecords.pop_back();
    return records.front();
}

/// Recycles the oldest record; nothing when there is none.
template<class Record>
void removeRecord(std::vector<Record*>& records, std::vector<Record*>& freeRecords)
{
    if (records.empty())
        return;
    freeRecords.push_back(records.back());
    records.pop_back();
}

/// Frees every record.
template<class Record>
void freeHistory(std::vector<Record*>& records, std::vector<Record*>& freeRecords)
{
    while (!records.empty())
        removeRecord(records, freeRecords);
    while (!freeRecords.empty()) {
        delete freeRecords.back();
        freeRecords.pop_back();
    }
}

} // namespace traceHistory
