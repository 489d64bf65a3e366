// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <vector>

/// Trace history of a diagram: records of the newest data sets, newest first, and the records that
/// wait to be used again, as a stack. Both lists own their records; a record is in exactly one of
/// them and is freed by freeHistory only, so that a steady stream of data allocates nothing.
namespace traceHistory {

/// Puts a record at the front of the history: the one recycled last, or a new one. A recycled
/// record still holds what it held.
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
