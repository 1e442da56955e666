// nmkUniqueId: sixteen bytes that tell one entity of the kernel from all others.
//
// Four words: the hash of the address where the identifier was made, a stamp (the time in seconds,
// unless a host chose another), a serial that counts up in the process, and 0. Stamp and address
// tell processes apart, the serial tells identifiers of one process apart, also where the clock
// steps back. A stamp of 1 marks an invalid identifier. The first serial of a process is 1; after
// the largest int follows the smallest.
//
// A process and the copy that fork() makes of it make equal identifiers while the second lasts:
// where both go on making them, the host gives one side another stamp through e_ptrm_uid_stamp.
//
// Identifiers may be made on several threads at once. One identifier is for one thread at a time.
#pragma once

#include <ncamcontainer/coPrf.h>
#include <nmktoolbox/export.h>
#include <nmktoolbox/uniqueid/nmkPtrInvalid.h>
#include <utils/utString.h>

#include <atomic>
#include <cstddef>
#include <cstdint>

class CArchive;

class NMKTOOLBOX_EXPORT nmkUniqueId {
  public:
    nmkUniqueId(const nmkUniqueId&) = default;
    nmkUniqueId& operator=(const nmkUniqueId&) = default;
    ~nmkUniqueId() = default;

    /// Memory for one identifier, of blocks that its thread has kept.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* block, std::size_t size) noexcept;
    static void operator delete(void*, void*) noexcept {}

    /// New identifiers on the heap, for the caller to own: a valid one; an invalid one; one that is
    /// read from the archive, see Serialize; and a copy. Null is copied as an invalid one. The
    /// first two spend a serial.
    static nmkUniqueId* create();
    static nmkUniqueId* create(nmkPtrInvalid);
    static nmkUniqueId* create(CArchive& archive);
    static nmkUniqueId* create(const nmkUniqueId* other);

    /// Copies the sixteen bytes; null makes this invalid and spends a serial.
    void become(const nmkUniqueId* other);

    /// Takes the text form: 32 lower-case hexadecimal digits. Any other text, null included, makes
    /// this invalid and spends a serial.
    void become(const char* hex);

    /// Generates this anew, in place, as an invalid or as a valid identifier. Each spends a serial.
    ///
    /// The first word depends on the address alone: one that was made here keeps it, one that was
    /// loaded or copied does not.
    void set_invalid();
    void update();

    /// The stamp of identifiers: the time in seconds since 1970, cut to 32 bits.
    int get_time();

    /// Another stamp that hosts may choose: a number drawn once in a process, plus the time modulo
    /// 10,000,000.
    int get_other();

    /// The first word.
    unsigned long get_hash_val() const noexcept { return m_hash; }

    /// 1, or 0 where the stamp is 1.
    int is_valid() const noexcept { return m_stamp != invalid_stamp ? 1 : 0; }

    /// 1 where all bytes agree, and also where both are invalid, whatever their bytes; else 0, as
    /// for null.
    int is_equal(const nmkUniqueId* other) const noexcept;

    /// 1 where this comes first by the words in their order, compared as signed numbers; else 0.
    /// Validity plays no part, so two invalid identifiers are equal and yet ordered.
    int operator<(const nmkUniqueId& other) const noexcept;

    /// Writes or reads the record, by the direction of the archive: words 0 and 1, the format
    /// number 2 in 2 bytes, words 2 and 3. A record of format 0 or 1 ends after the format number,
    /// and words 2 and 3 are then 0; formats above 2 are read as 2. Throws the archive's exceptions
    /// and is then as it was.
    void Serialize(CArchive& archive);

    /// The text form. The last one writes 32 digits and a nul: `text` has room for 33 characters.
    utString hex_string() const;
    void hex_string(utString& text) const;
    void hex_string(char* text) const;

  private:
    friend class nmkUniqueIdPtr;

    static constexpr std::int32_t invalid_stamp = 1;

    // Leaves the words unset.
    nmkUniqueId() {}  // NOLINT: the words are set by whoever makes one

    void become(nmkPtrInvalid);
    void from_hex(const char* hex);
    [[gnu::visibility("hidden")]] void generate();
    void write(CArchive& archive) const;
    void read(CArchive& archive);

    static std::atomic<int> s_num_id;  // the serial that was spent last

    std::uint32_t m_hash;
    std::int32_t m_stamp;
    std::int32_t m_serial;
    std::uint32_t m_spare;
};

static_assert(sizeof(nmkUniqueId) == 16, "identifiers are compared and copied as sixteen bytes");

/// The operation that gives identifiers their stamp: nmkUniqueId::get_time, unless a host points it
/// at another one. Never null. Change it while no identifier is being made.
NMKTOOLBOX_EXPORT extern int (nmkUniqueId::*e_ptrm_uid_stamp)();

using nmkUniqueIdcoPrf = coPrf<nmkUniqueId>;
