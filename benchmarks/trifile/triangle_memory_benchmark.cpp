// triangle_memory_benchmark: the memory at the peak of reading a million triangles, beside that of
// the block that comes out.
//
// Counted are the bytes asked of operator new that are held at once. One line for each kind of
// file; ends with 1 when more is held than is to be reached.

#include <nmknmt/nmkNMTFileWrite.h>
#include <nmktoolbox/trifile.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "trifile/grid_model.h"

namespace {

std::size_t held = 0;
std::size_t most_held = 0;

// The size of a block is in front of it.
constexpr std::size_t usual_room = alignof(std::max_align_t);

void* allocate(std::size_t size, std::size_t alignment) {
    const std::size_t room = std::max(alignment, usual_room);
    const std::size_t whole = (size + room + room - 1) / room * room;
    char* const block = static_cast<char*>(std::aligned_alloc(room, whole));
    if (block == nullptr) throw std::bad_alloc();
    std::memcpy(block, &size, sizeof size);
    held += size;
    most_held = std::max(most_held, held);
    return block + room;
}

void release(void* pointer, std::size_t alignment) noexcept {
    if (pointer == nullptr) return;
    char* const block = static_cast<char*>(pointer) - std::max(alignment, usual_room);
    std::size_t size = 0;
    std::memcpy(&size, block, sizeof size);
    held -= size;
    std::free(block);
}

}  // namespace

[[gnu::noinline]] void* operator new(std::size_t size) { return allocate(size, usual_room); }

[[gnu::noinline]] void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate(size, static_cast<std::size_t>(alignment));
}

[[gnu::noinline]] void operator delete(void* pointer) noexcept { release(pointer, usual_room); }

void operator delete(void* pointer, std::size_t) noexcept { operator delete(pointer); }

[[gnu::noinline]] void operator delete(void* pointer, std::align_val_t alignment) noexcept {
    release(pointer, static_cast<std::size_t>(alignment));
}

void operator delete(void* pointer, std::size_t, std::align_val_t alignment) noexcept {
    operator delete(pointer, alignment);
}

namespace {

constexpr double target = 2.3;

bool measure(const char* what, const std::string& name, int triangles_expected) {
    grid_model::NoProgress progress;
    const std::size_t before = most_held = held;
    giTriBlock block;
    int status = 0;
    {
        nmkTriFileReader reader(name.c_str(), progress, 0, 1, 1.0);
        status = reader.get_block(&block);
    }
    const std::size_t peak = most_held - before;
    const std::size_t of_block = held - before;
    giTriArrcoFeature triangles;
    const bool same =
        status == 1 && block.get(triangles) != 0 && triangles->size() == triangles_expected;
    constexpr double megabyte = 1e6;
    const double ratio = static_cast<double>(peak) / static_cast<double>(of_block);
    const bool reached = same && stopwatch::within(ratio, target);
    std::printf("%-44s peak %.1f MB, block %.1f MB, %.3f times, at most %.1f%s%s\n", what,
                static_cast<double>(peak) / megabyte, static_cast<double>(of_block) / megabyte,
                ratio, target, same ? "" : "  RESULTS DIFFER", reached ? "" : "  MISSED");
    return reached;
}

bool measure(const char* what, const char* extension, const std::string& bytes) {
    const grid_model::TemporaryFile file(bytes, extension);
    return measure(what, file.name(), 2 * grid_model::side * grid_model::side);
}

bool measure_nmt(const char* what, const giTriBlock& block) {
    const grid_model::TemporaryFile file({}, ".nmt");
    nmkNMTFileMFC target_file(utString(file.name()), apNMKModeWrite);
    const giTriBlock* const blocks[] = {&block};
    if (nmkNMTFileWrite(target_file).write_file("grid", true, blocks) != 0) return false;
    if (target_file.close() != 0) return false;
    return measure(what, file.name(), 2 * grid_model::side * grid_model::side);
}

}  // namespace

int main() {
    const auto grid = grid_model::facets();
    const auto shuffled = grid_model::shuffled_facets();
    bool reached =
        measure("memory, binary STL, a grid of 1e6", ".stl", grid_model::binary_stl(grid));
    reached &=
        measure("memory, binary STL, 1e6 shuffled", ".stl", grid_model::binary_stl(shuffled));
    reached &= measure("memory, text STL, a grid of 1e6", ".stl", grid_model::text_stl(grid));
    reached &= measure("memory, Flue, a grid of 1e6", ".tri", grid_model::flue());
    reached &= measure("memory, TTR, a grid of 1e6", ".ttr", grid_model::ttr(grid));
    reached &=
        measure_nmt("memory, NMT, 1e6 without shared nodes", *grid_model::unshared_block(grid));
    return reached ? 0 : 1;
}
