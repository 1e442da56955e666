#include "x86_instruction.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace nmk_seh {

namespace {

constexpr unsigned char rex_w = 8, rex_x = 2, rex_b = 1;

// What precedes the opcode.
struct Prefixes {
    unsigned char rex = 0;
    bool is_16_bit = false;
    bool has_other_segment = false;  // an address that does not begin at 0
    bool has_short_address = false;
};

// A position in an instruction, from which it is read forwards.
class Reader {
  public:
    explicit Reader(const unsigned char* at) : m_at(at) {}

    unsigned char byte() { return *m_at++; }
    unsigned char peek() const { return *m_at; }
    const unsigned char* position() const { return m_at; }

    template <class Number>
    Number number() {
        Number value;
        std::memcpy(&value, m_at, sizeof value);
        m_at += sizeof value;
        return value;
    }

  private:
    const unsigned char* m_at;
};

constexpr int max_prefixes = 14;  // an instruction has at most 15 bytes

Prefixes read_prefixes(Reader& reader) {
    Prefixes prefixes;
    for (int count = 0; count < max_prefixes; ++count, reader.byte()) {
        switch (reader.peek()) {
            case 0x66:
                prefixes.is_16_bit = true;
                break;
            case 0x67:
                prefixes.has_short_address = true;
                break;
            case 0x64:
            case 0x65:
                prefixes.has_other_segment = true;
                break;
            case 0x26:
            case 0x2E:
            case 0x36:
            case 0x3E:
            case 0xF0:
            case 0xF2:
            case 0xF3:
                break;
            default:
                if ((reader.peek() & 0xF0) == 0x40) prefixes.rex = reader.byte();
                return prefixes;
        }
    }
    return prefixes;
}

// The parts of the byte behind the opcode.
struct Operands {
    explicit Operands(unsigned char modrm)
        : mode(modrm >> 6), extension((modrm >> 3) & 7), place(modrm & 7) {}
    int mode, extension, place;
};

unsigned int number_of(int low_bits, unsigned char rex, unsigned char bit) {
    return static_cast<unsigned int>(low_bits) + ((rex & bit) != 0 ? 8U : 0U);
}

// The sum of base and scaled index that the byte behind the operands gives.
std::uint64_t indexed_address(Reader& reader, int mode, unsigned char rex,
                              const X86Registers& registers) {
    const Operands parts(reader.byte());  // scale, index, base
    constexpr unsigned int none = 4;
    const unsigned int index = number_of(parts.extension, rex, rex_x);
    std::uint64_t address = index == none ? 0 : registers[index] << parts.mode;
    if (parts.place == 5 && mode == 0) {
        return address + static_cast<std::uint64_t>(std::int64_t{reader.number<std::int32_t>()});
    }
    return address + registers[number_of(parts.place, rex, rex_b)];
}

// The address of an operand in memory. A division has no immediate number, so that the next
// instruction begins behind the displacement.
std::uint64_t address_of(Reader& reader, const Operands& operands, unsigned char rex,
                         const X86Registers& registers) {
    if (operands.mode == 0 && operands.place == 5) {
        const std::int64_t displacement = reader.number<std::int32_t>();
        return reinterpret_cast<std::uint64_t>(reader.position()) +
               static_cast<std::uint64_t>(displacement);
    }
    const std::uint64_t base = operands.place == 4
                                   ? indexed_address(reader, operands.mode, rex, registers)
                                   : registers[number_of(operands.place, rex, rex_b)];
    std::int64_t displacement = 0;
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): is a number, with its sign
    if (operands.mode == 1) displacement = reader.number<std::int8_t>();
    if (operands.mode == 2) displacement = reader.number<std::int32_t>();
    return base + static_cast<std::uint64_t>(displacement);
}

std::size_t operand_size(unsigned char opcode, const Prefixes& prefixes) {
    if (opcode == 0xF6) return 1;
    if ((prefixes.rex & rex_w) != 0) return 8;
    return prefixes.is_16_bit ? 2 : 4;
}

// The lowest bytes of the register; those named ah to bh are the second bytes of the first four.
std::uint64_t register_operand(const Operands& operands, const Prefixes& prefixes, std::size_t size,
                               const X86Registers& registers) {
    const bool is_second_byte = size == 1 && prefixes.rex == 0 && operands.place >= 4;
    if (is_second_byte) return registers[static_cast<unsigned int>(operands.place) - 4] >> 8;
    return registers[number_of(operands.place, prefixes.rex, rex_b)];
}

// The divisor; nothing where the instruction is another one, or addresses memory in a way that
// compilers do not use.
std::optional<std::uint64_t> divisor(const unsigned char* instruction,
                                     const X86Registers& registers) {
    Reader reader(instruction);
    const Prefixes prefixes = read_prefixes(reader);
    const unsigned char opcode = reader.byte();
    if (opcode != 0xF6 && opcode != 0xF7) return std::nullopt;
    const Operands operands(reader.byte());
    if (operands.extension < 6) return std::nullopt;
    const std::size_t size = operand_size(opcode, prefixes);
    std::uint64_t value = 0;
    if (operands.mode == 3) {
        const std::uint64_t whole = register_operand(operands, prefixes, size, registers);
        std::memcpy(&value, &whole, size);
    } else if (!prefixes.has_other_segment && !prefixes.has_short_address) {
        const std::uint64_t address = address_of(reader, operands, prefixes.rex, registers);
        std::memcpy(&value, reinterpret_cast<const void*>(address), size);
    } else {
        return std::nullopt;
    }
    return value;
}

constexpr std::array<unsigned char, 15> privileged = {
    0x6C, 0x6D, 0x6E, 0x6F, 0xE4, 0xE5, 0xE6, 0xE7, 0xEC, 0xED, 0xEE, 0xEF, 0xF4, 0xFA, 0xFB};

constexpr std::array<unsigned char, 10> privileged_behind_0f = {0x06, 0x08, 0x09, 0x20, 0x21,
                                                                0x22, 0x23, 0x30, 0x32, 0x33};

}  // namespace

bool is_privileged(const unsigned char* instruction) {
    Reader reader(instruction);
    read_prefixes(reader);
    const unsigned char opcode = reader.byte();
    if (opcode != 0x0F) return std::ranges::find(privileged, opcode) != privileged.end();
    return std::ranges::find(privileged_behind_0f, reader.byte()) != privileged_behind_0f.end();
}

bool divides_by_other_than_zero(const unsigned char* instruction, const X86Registers& registers) {
    return divisor(instruction, registers).value_or(0) != 0;
}

}  // namespace nmk_seh
