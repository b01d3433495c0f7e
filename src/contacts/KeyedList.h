#pragma once

#include <QHash>
#include <QString>

#include <algorithm>
#include <memory>
#include <vector>

// An ordered list of records that are found by a text key. Positions count from 1 and fall when an earlier
// record is removed. Nothing is unique: the first record of a key wins. Look-ups are hashed. A record's key
// must not change while it stands in the list.
//
// A removed record leaves a gap behind, and the gaps are closed when they have become many: so removing all
// records one after the other costs no square.
template <typename Record>
class KeyedList
{
public:
    // Null out of range.
    Record* Item(int position) const
    {
        return isPosition(position) ? &entries_[slotOf(position)]->record : nullptr;
    }

    // The first record with this key, or null.
    Record* record(const QString& key) const
    {
        Entry* entry = first_.value(key);
        return entry ? &entry->record : nullptr;
    }

    int Count() const { return static_cast<int>(entries_.size() - gaps_.size()); }

    // False out of range.
    bool Remove(int position)
    {
        if (!isPosition(position))
            return false;
        const std::size_t slot = slotOf(position);
        unlink(entries_[slot].get());
        entries_[slot].reset();
        gaps_.insert(gaps_.begin() + static_cast<std::ptrdiff_t>(gapsBefore(slot)), slot);
        if (gaps_.size() > 32 + entries_.size() / 4)
            closeGaps();
        return true;
    }

    // Makes room for so many more at once.
    void expect(std::size_t more)
    {
        entries_.reserve(entries_.size() + more);
        first_.reserve(first_.size() + static_cast<qsizetype>(more));
    }

    void RemoveAll()
    {
        first_.clear();
        entries_.clear();
        gaps_.clear();
    }

protected:
    Record* append(const QString& key, Record value)
    {
        auto entry = std::make_unique<Entry>(Entry{std::move(value), key, entries_.size(), nullptr});
        Entry* added = entry.get();
        entries_.push_back(std::move(entry));
        Entry*& first = first_[key];
        if (!first) {
            first = added;
        } else {
            Entry* last = first;
            while (last->sameKey)
                last = last->sameKey;
            last->sameKey = added;
        }
        return &added->record;
    }

    // The position of the first record with this key, 0 if none.
    int find(const QString& key) const
    {
        const Entry* entry = first_.value(key);
        return entry ? static_cast<int>(entry->slot - gapsBefore(entry->slot)) + 1 : 0;
    }

private:
    struct Entry {
        Record record;
        QString key;
        std::size_t slot;
        Entry* sameKey;
    };

    bool isPosition(int position) const { return position >= 1 && position <= Count(); }

    std::size_t gapsBefore(std::size_t slot) const
    {
        return static_cast<std::size_t>(std::lower_bound(gaps_.begin(), gaps_.end(), slot) - gaps_.begin());
    }

    std::size_t slotOf(int position) const
    {
        // The gap with `n` gaps before it stands behind `gap - n` records.
        const auto records = static_cast<std::size_t>(position - 1);
        std::size_t low = 0;
        std::size_t high = gaps_.size();
        while (low < high) {
            const std::size_t middle = (low + high) / 2;
            if (gaps_[middle] - middle <= records)
                low = middle + 1;
            else
                high = middle;
        }
        return records + low;
    }

    void closeGaps()
    {
        std::erase(entries_, nullptr);
        gaps_.clear();
        for (std::size_t slot = 0; slot < entries_.size(); ++slot)
            entries_[slot]->slot = slot;
    }

    void unlink(Entry* entry)
    {
        Entry* first = first_.value(entry->key);
        if (first == entry) {
            if (entry->sameKey)
                first_[entry->key] = entry->sameKey;
            else
                first_.remove(entry->key);
            return;
        }
        while (first->sameKey != entry)
            first = first->sameKey;
        first->sameKey = entry->sameKey;
    }

    std::vector<std::unique_ptr<Entry>> entries_; // null in a gap
    std::vector<std::size_t> gaps_;               // ascending
    QHash<QString, Entry*> first_;
};
