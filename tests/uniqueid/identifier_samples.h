// identifier_samples.h: identifiers with known words, their records, and the serials that are
// spent.
#pragma once

#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>
#include <nmktoolbox/uniqueid.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace identifier_samples {

using Bytes = std::vector<unsigned char>;
using Words = std::array<std::uint32_t, 4>;

// An explicit instantiation may name a private member; it hands it on through a friend function.
template <class Tag, typename Tag::Type member>
struct Opened {
    friend typename Tag::Type member_of(Tag) { return member; }
};
struct LastSerial {
    using Type = std::atomic<int>*;
    friend Type member_of(LastSerial);
};
template struct Opened<LastSerial, &nmkUniqueId::s_num_id>;

/// The serial that was spent last.
inline std::atomic<int>& last_serial() { return *member_of(LastSerial()); }

/// How many serials `work` spends. The nil handle, which spends one when it is made, is made first.
template <class Work>
int serials_spent(const Work& work) {
    nmkUniqueIdPtrcoSet::nil();
    nmkRefToObjectIdcoSet::nil();
    const int before = last_serial();
    work();
    return last_serial() - before;
}

inline std::string hex_of(const Words& words) {
    char text[33];
    std::snprintf(text, sizeof text, "%08x%08x%08x%08x", words[0], words[1], words[2], words[3]);
    return text;
}

inline Words words_of(const nmkUniqueId& identifier) {
    Words words{};
    std::sscanf(identifier.hex_string().c_str(), "%8x%8x%8x%8x", &words[0], &words[1], &words[2],
                &words[3]);
    return words;
}

/// A handle to a new identifier with these words.
inline nmkUniqueIdPtr handle_with(const Words& words) {
    nmkUniqueIdPtr handle(nmk_ptr_claim, nmkUniqueId::create());
    handle->become(hex_of(words).c_str());
    return handle;
}

/// The bytes that an object stores by Serialize.
template <class Object>
Bytes record_of(Object& object) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    object.Serialize(archive);
    archive.Close();
    return {file.bytes().begin(), file.bytes().end()};
}

/// The record of an identifier with these words, or its first bytes.
inline Bytes record_with(const Words& words, std::uint16_t format = 2) {
    Bytes bytes;
    const auto put = [&](std::uint32_t value, int count) {
        for (int i = 0; i < count; ++i) bytes.push_back(value >> (8 * i) & 0xFF);
    };
    put(words[0], 4);
    put(words[1], 4);
    put(format, 2);
    if (format < 2) return bytes;
    put(words[2], 4);
    put(words[3], 4);
    return bytes;
}

/// Lets an object load from the bytes by Serialize; returns how many bytes it left.
template <class Object>
std::size_t load_record(Object& object, const Bytes& bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    object.Serialize(archive);
    archive.Close();
    return static_cast<std::size_t>(file.GetLength() - file.GetPosition());
}

/// A stamp that the test chooses, for as long as this lives.
class ScopedStamp {
  public:
    explicit ScopedStamp(int value) : m_before(e_ptrm_uid_stamp) {
        stamp() = value;
        e_ptrm_uid_stamp = static_cast<int (nmkUniqueId::*)()>(&Chosen::give);
    }
    ScopedStamp(const ScopedStamp&) = delete;
    ScopedStamp& operator=(const ScopedStamp&) = delete;
    ~ScopedStamp() { e_ptrm_uid_stamp = m_before; }

    static int& stamp() {
        static int value = 0;
        return value;
    }

  private:
    struct Chosen : nmkUniqueId {
        int give() { return stamp(); }
    };

    int (nmkUniqueId::*m_before)();
};

/// An empty session table before and after a test.
struct FreshSession {
    FreshSession() { nmkUniqueIdTable::delete_session_entities(); }
    FreshSession(const FreshSession&) = delete;
    FreshSession& operator=(const FreshSession&) = delete;
    ~FreshSession() { nmkUniqueIdTable::delete_session_entities(); }
};

}  // namespace identifier_samples
