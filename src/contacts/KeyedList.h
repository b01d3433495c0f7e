#pragma once

#include <QHash>
#include <QString>

#include <memory>
#include <vector>

// An ordered list of records that are found by a text key. Positions count from 1 and fall when an earlier
// record is removed. Nothing is unique: the first record of a key wins. Look-ups are hashed. A record's key
// must not change while it stands in the list.
template <typename Record>
class KeyedList
{
public:
    Record* append(const QString& key, Record record)
    {
        auto entry = std::make_unique<Entry>(
            Entry{std::move(record), key, static_cast<int>(entries_.size()), nullptr});
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
        return entry ? entry->index + 1 : 0;
    }

    // Null out of range.
    Record* at(int position) const
    {
        return isPosition(position) ? &entries_[static_cast<std::size_t>(position - 1)]->record : nullptr;
    }

    int count() const { return static_cast<int>(entries_.size()); }

    // False out of range.
    bool remove(int position)
    {
        if (!isPosition(position))
            return false;
        const auto at = entries_.begin() + (position - 1);
        unlink(at->get());
        for (auto later = at + 1; later != entries_.end(); ++later)
            --(*later)->index;
        entries_.erase(at);
        return true;
    }

    void clear()
    {
        first_.clear();
        entries_.clear();
    }

private:
    struct Entry {
        Record record;
        QString key;
        int index;
        Entry* sameKey;
    };

    bool isPosition(int position) const { return position >= 1 && position <= count(); }

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

    std::vector<std::unique_ptr<Entry>> entries_;
    QHash<QString, Entry*> first_;
};
