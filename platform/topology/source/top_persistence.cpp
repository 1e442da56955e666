#include <ngk/ngk_persistence.h>
#include <topology/top_persistence.h>

#include <array>
#include <deque>
#include <typeinfo>

#include "part_lists.h"

namespace nmk_topology {

namespace {

// What is made of the vertices and edges; each writes and reads one class.

void write(CArchive& archive, const StoredParts& parts, const topVertex& vertex) {
    parts.write(archive, vertex);
}

void write(CArchive& archive, const StoredParts& parts, const topEdge& edge) {
    parts.write(archive, edge);
}

void write(CArchive& archive, const StoredParts& parts, const topLoop& loop) {
    write_count(archive, loop.uses().size());
    for (const topEdgeUse& use : loop.uses()) {
        parts.write(archive, *use.edge);
        write_flag(archive, use.is_reversed);
    }
}

void write(CArchive& archive, const StoredParts& parts, const topFace& face) {
    archive << face.surface();
    write_flag(archive, face.is_reversed());
    write_count(archive, face.loops().size());
    for (const topLoopPtr& loop : face.loops()) write(archive, parts, *loop);
}

void write(CArchive& archive, const StoredParts& parts, const topShell& shell) {
    write_count(archive, shell.faces().size());
    for (const topFacePtr& face : shell.faces()) write(archive, parts, *face);
}

void read(CArchive& archive, const LoadedParts& parts, topVertexPtr& vertex) {
    vertex = parts.read_vertex(archive);
}

void read(CArchive& archive, const LoadedParts& parts, topEdgePtr& edge) {
    edge = parts.read_edge(archive);
}

void read(CArchive& archive, const LoadedParts& parts, topLoopPtr& loop) {
    std::vector<topEdgeUse> uses;
    for (std::uint32_t left = archive.ReadCount(); left > 0; --left) {
        const topEdgePtr& edge = parts.read_edge(archive);
        uses.push_back({edge, read_flag(archive)});
    }
    loop = topLoopPtr(new topLoop(std::move(uses)));
}

void read(CArchive& archive, const LoadedParts& parts, topFacePtr& face) {
    ngkSurfPtr surface;
    archive >> surface;
    const bool is_reversed = read_flag(archive);
    std::vector<topLoopPtr> loops;
    for (std::uint32_t left = archive.ReadCount(); left > 0; --left)
        read(archive, parts, loops.emplace_back());
    face = topFacePtr(new topFace(surface, is_reversed, std::move(loops)));
}

void read(CArchive& archive, const LoadedParts& parts, topShellPtr& shell) {
    std::vector<topFacePtr> faces;
    for (std::uint32_t left = archive.ReadCount(); left > 0; --left)
        read(archive, parts, faces.emplace_back());
    shell = topShellPtr(new topShell(std::move(faces)));
}

struct Kind {
    CRuntimeClass runtime_class;
    const std::type_info* type;
    void (*write)(CArchive& archive, const topTopology& part);
    topTopologyPtr (*read)(CArchive& archive);
};

const CRuntimeClass base_class = {"topTopology", sizeof(topTopology), nullptr};

template <class Part>
Kind kind(const char* name) {
    constexpr unsigned int version = 1;
    const auto write_part = [](CArchive& archive, const topTopology& any) {
        const Part& part = static_cast<const Part&>(any);
        const StoredParts parts(part);
        parts.write(archive);
        write(archive, parts, part);
    };
    const auto read_part = [](CArchive& archive) {
        const LoadedParts parts(archive);
        coPrf<const Part> part;
        read(archive, parts, part);
        return topTopologyPtr(part);
    };
    return {{name, static_cast<int>(sizeof(Part)), &base_class, version},
            &typeid(Part),
            write_part,
            read_part};
}

/// The classes, registered by name.
class Kinds {
  public:
    Kinds() {
        for (const Kind& each : m_kinds) m_registrations.emplace_back(&each.runtime_class);
    }

    /// Null for another class.
    const Kind* of(const topTopology& part) const {
        return find([&](const Kind& each) { return *each.type == typeid(part); });
    }
    const Kind* of(const CRuntimeClass* runtime_class) const {
        return find([&](const Kind& each) { return &each.runtime_class == runtime_class; });
    }

  private:
    template <class Condition>
    const Kind* find(const Condition& condition) const {
        const auto* const found = std::ranges::find_if(m_kinds, condition);
        return found != m_kinds.end() ? found : nullptr;
    }

    // Records name these classes, so a name is never given to another one.
    std::array<Kind, 5> m_kinds = {kind<topVertex>("topVertex"), kind<topEdge>("topEdge"),
                                   kind<topLoop>("topLoop"), kind<topFace>("topFace"),
                                   kind<topShell>("topShell")};
    std::deque<CRuntimeClassRegistration> m_registrations;  // which are not copied
};

const Kinds& kinds() {
    static const Kinds made;
    return made;
}

}  // namespace

}  // namespace nmk_topology

CArchive& operator<<(CArchive& archive, const topTopologyPtr& part) {
    using namespace nmk_topology;
    if (!part) {
        write_flag(archive, false);
        return archive;
    }
    const Kind* const kind = kinds().of(*part);
    const bool can_be_stored = kind != nullptr && part->is_valid();
    if (!can_be_stored) refuse(CArchiveException::badSchema);
    write_flag(archive, true);
    archive.WriteClass(&kind->runtime_class);
    kind->write(archive, *part);
    return archive;
}

CArchive& operator>>(CArchive& archive, topTopologyPtr& part) {
    using namespace nmk_topology;
    const Kinds& known = kinds();
    topTopologyPtr loaded;
    if (read_flag(archive)) {
        const Kind* const kind = known.of(archive.ReadClass(&base_class));
        if (kind == nullptr) refuse(CArchiveException::badClass);
        loaded = kind->read(archive);
        require(loaded->is_valid());
    }
    part = loaded;
    return archive;
}
