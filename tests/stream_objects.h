// stream_objects.h: classes to store and load, for the tests and the fuzzer of object streams.
//
// Nodes refer to each other freely, to themselves too, so no node owns another: all that live are
// listed, and delete_all() deletes them.
#pragma once

#include <mfc/CArchive.h>
#include <mfc/CMemFile.h>

#include <set>
#include <string>
#include <vector>

/// A versionable class with one of everything that a stream holds.
class StreamNode : public CObject {
  public:
    static constexpr unsigned int own_schema = 3;

    explicit StreamNode(int value = 0) : number(value) { living().insert(this); }
    StreamNode(const StreamNode&) = delete;
    StreamNode& operator=(const StreamNode&) = delete;
    ~StreamNode() override { living().erase(this); }

    static std::set<StreamNode*>& living() {
        static std::set<StreamNode*> nodes;
        return nodes;
    }
    static void delete_all() {
        while (!living().empty()) delete *living().begin();
    }

    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    static CRuntimeClass* GetThisClass() {
        static CRuntimeClass of_this = {"StreamNode", sizeof(StreamNode), CObject::GetThisClass(),
                                        CRuntimeClass::versionable | own_schema, CreateObject};
        return &of_this;
    }
    static CObject* CreateObject() { return new StreamNode; }

    void Serialize(CArchive& archive) override {
        if (archive.IsStoring()) {
            archive << number << name << wide_name;
            archive.WriteCount(static_cast<std::uint32_t>(links.size()));
            for (const CObject* link : links) archive << link;
            return;
        }
        schema = archive.GetObjectSchema();
        archive >> number >> name >> wide_name;
        for (std::uint32_t left = archive.ReadCount(); left > 0; --left) {
            links.push_back(archive.ReadObject(nullptr));
        }
        schema_at_the_end = archive.GetObjectSchema();
    }

    int number;
    std::string name;
    std::wstring wide_name;
    std::vector<CObject*> links;
    unsigned int schema = 0;
    unsigned int schema_at_the_end = 0;
};

/// A class derived from it that adds nothing and is not versionable.
class StreamSpecialNode : public StreamNode {
  public:
    CRuntimeClass* GetRuntimeClass() const override { return GetThisClass(); }
    static CRuntimeClass* GetThisClass() {
        static CRuntimeClass of_this = {"StreamSpecialNode", sizeof(StreamSpecialNode),
                                        StreamNode::GetThisClass(), 2, CreateObject};
        return &of_this;
    }
    static CObject* CreateObject() { return new StreamSpecialNode; }
};

/// Both classes registered, for as long as this lives.
struct StreamClasses {
    CRuntimeClassRegistration node{StreamNode::GetThisClass()};
    CRuntimeClassRegistration special_node{StreamSpecialNode::GetThisClass()};
};

/// The bytes that `write` stores in an archive.
template <class Write>
std::vector<unsigned char> stored_bytes(const Write& write, int buffer_size = 4096) {
    CMemFile file;
    CArchive archive(&file, CArchive::store, buffer_size);
    write(archive);
    archive.Close();
    return {file.bytes().begin(), file.bytes().end()};
}

/// Lets `read` load from the bytes, which stand in a buffer of exactly their size.
template <class Read>
void load_bytes(const std::vector<unsigned char>& bytes, const Read& read, int buffer_size = 4096) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load, buffer_size);
    read(archive);
}
