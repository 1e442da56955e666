#include <mfc/CArchive.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <nmktoolbox/serializationexerciser/serialize.h>
#include <pers/psArchiveFile.h>
#include <utils/utAssert.h>

namespace {

constexpr const char* stream_name = "Test Serializer";

// A name in the directory for temporary files; a file of that name is deleted at the end.
class TemporaryFile {
  public:
    TemporaryFile() : m_name(nmkFileDirTmpFilenameTag, "McTPCompSerializeExt", nullptr) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { m_name.delete_file(); }

    const utString& name() const { return m_name.get(); }

  private:
    nmkFileDir m_name;
};

// Deliberate: the results of opening are not looked at. A file or a stream that is not there gives
// a null archive, which the caller learns from the null object that is read.
void write_object(psArchiveFile& file, const utString& name, const CObject& out) {
    file.open(name, psFileModeWrite);
    CArchive* archive = nullptr;
    file.write_archive(stream_name, archive);
    if (archive != nullptr) *archive << &out;
    // Closed before it is read: only then has the file its name and all its bytes.
    file.close();
}

// Deliberate: whether the archive was used up is not asked, so a class may read less than it wrote.
CObject* read_object(psArchiveFile& file, const utString& name) {
    file.open(name, psFileModeRead);
    CArchive* archive = nullptr;
    file.read_archive(stream_name, archive);
    CObject* read = nullptr;
    if (archive != nullptr) *archive >> read;
    return read;
}

}  // namespace

void serialize(CObject& out, CObject** in) {
    *in = nullptr;
    const TemporaryFile temporary;
    const psArchiveFileHeader header("TestArchive", "Version 1.0", psByteOrderLittle);
    psArchiveFile file(header, temporary.name(), psFileModeWrite);
    write_object(file, temporary.name(), out);
    *in = read_object(file, temporary.name());
    if (*in == nullptr) {
        ut_assert_failed("NULL object read", __FILE__, __LINE__, __func__);
    } else if (out.GetRuntimeClass() != (*in)->GetRuntimeClass()) {
        ut_assert_failed("Types Differ: out.GetRuntimeClass() == (*in)->GetRuntimeClass()",
                         __FILE__, __LINE__, __func__);
    }
    file.close();
}
