// coTable: a map, made of a hash set of records of a key and its value.
//
// Records with equal keys are equal, whatever their values. For a missing key the nil record is
// read, which has a default key and a default value.
#pragma once

#include <ncamcontainer/coSet.h>

/// One record of a table.
template <class Key, class Value>
struct UT_EXPORT coTableP {
    Key key{};
    Value value{};
};

/// Compares and hashes records by their keys alone.
template <class Key, class Value>
struct UT_EXPORT coTablePInterface {
    static unsigned int obj_hash(const coTableP<Key, Value>& record) {
        return coObjInterface<Key>::obj_hash(record.key);
    }
    static int obj_compare(const coTableP<Key, Value>& a, const coTableP<Key, Value>& b) {
        return &a == &b ? 0 : coObjInterface<Key>::obj_compare(a.key, b.key);
    }
};

template <class Key, class Value>
class UT_EXPORT coTable {
  public:
    using Record = coTableP<Key, Value>;

    class Records : public coSet<Record, coTablePInterface<Key, Value>> {
        using Set = coSet<Record, coTablePInterface<Key, Value>>;

      public:
        using Set::Set;

        /// The value of the record with the key of `wanted`, which is added when it is missing.
        Value& value_of(const Record& wanted) {
            int index = this->find_index(wanted);
            if (index < 0) {
                this->add(wanted);
                index = this->find_index(wanted);
            }
            return this->arr_get(index).value;
        }
    };

    /// The size exponent and the load limit of the set of records, see coSet.
    explicit coTable(int size_exponent = 4, int load_limit = 50) noexcept
        : m_records(size_exponent, load_limit) {}
    coTable(utCopy, const coTable& other) : m_records(other.m_records) {}

    /// The value for `key`; a missing key is added once, with a default value. The reference is
    /// valid until a key is next added or removed.
    Value& operator[](const Key& key) { return m_records.value_of(Record{key, Value()}); }

    /// The value for `key`, or the value of the nil record; adds nothing.
    const Value& read(const Key& key) const { return m_records.find(Record{key, Value()}).value; }

    /// Removes the record for `key`; non-zero when there was one.
    int remove(const Key& key) {
        const int before = m_records.size();
        m_records.remove(Record{key, Value()});
        return before - m_records.size();
    }

    /// Copies the records of `other`.
    void become(utCopy, const coTable& other) { m_records = other.m_records; }

    /// Number of records.
    int size() const noexcept { return m_records.size(); }

    /// Removes all records.
    void clear() { m_records.clear(); }

    /// The records, in an order that has no meaning. The table must not change meanwhile.
    auto begin() const noexcept { return m_records.begin(); }
    auto end() const noexcept { return m_records.end(); }

    /// The set of all records.
    const Records& records() const noexcept { return m_records; }

  private:
    Records m_records;
};
