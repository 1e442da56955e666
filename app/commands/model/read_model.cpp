// read_model: reads a triangle model of any format into blocks in millimetres.

#include "commands/model/read_model.h"

#include <mfc/CMemFile.h>
#include <nmknmt/nmkNMTFileMFC.h>
#include <nmknmt/nmkNMTFileRead.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/trifile/nmkTriFileReader.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <span>
#include <utility>

#include "commands/model/change_model.h"
#include "commands/model/usable_triangles.h"
#include "files/read_whole_file.h"

namespace nmk_model {

namespace {

/// The bytes of a model: a file, or what standard input had.
struct ModelBytes {
    std::string memory;  // of standard input, to which the file refers
    std::unique_ptr<nmkNMTFile> file;
};

/// Gives the library's reader a file that is open already.
class OpenFileMaker : public nmkNMTFileMaker {
  public:
    OpenFileMaker(ModelFormat format, std::unique_ptr<nmkNMTFile> file)
        : nmkNMTFileMaker(reader_name(format)), m_file(std::move(file)) {}

  protected:
    std::unique_ptr<nmkNMTFile> create_basic_nmt_file() override { return std::move(m_file); }

  private:
    std::unique_ptr<nmkNMTFile> m_file;
};

/// Why a name cannot be opened as a model.
std::string opening_problem(const std::string& file_name) {
    struct stat facts {};
    if (::stat(file_name.c_str(), &facts) != 0) {
        return std::string("cannot be opened: ") + std::strerror(errno);
    }
    if (S_ISDIR(facts.st_mode)) return "is a directory; expected a file";
    if (!S_ISREG(facts.st_mode)) {
        return "is not a regular file; expected one, or \"-\" for standard input";
    }
    errno = 0;
    return ::access(file_name.c_str(), R_OK) != 0
               ? std::string("cannot be opened: ") + std::strerror(errno)
               : "cannot be opened";
}

nmk_text::Result<std::unique_ptr<ModelBytes>> open_model(const std::string& file_name) {
    auto bytes = std::make_unique<ModelBytes>();
    if (file_name == nmk_files::standard_stream) {
        auto read = nmk_files::read_standard_input_bytes();
        if (!read) return read.error();
        bytes->memory = *std::move(read);
        auto* const first = reinterpret_cast<unsigned char*>(bytes->memory.data());
        bytes->file = std::make_unique<nmkNMTFileMFC>(
            CFilecoPrf(new CMemFile(std::span(first, bytes->memory.size()))));
        return bytes;
    }
    auto file = std::make_unique<nmkNMTFileMFC>(utString(file_name.c_str()), apNMKModeRead);
    if (!file->is_open()) return nmk_text::Error{file_name, 0, opening_problem(file_name)};
    bytes->file = std::move(file);
    return bytes;
}

/// The units that the file states, or those that were given for a file that states none.
ModelUnits units_of(ModelFormat format, apINMKFile& file, ModelUnits given) {
    if (format != ModelFormat::nmt) return given;
    nmkNMTFileRead header(&file);
    const char* title = nullptr;
    int blocks = 0;
    int nodes = 0;
    int triangles = 0;
    const bool is_read = header.read_header(&title, &blocks, &nodes, &triangles) == 0;
    return is_read && header.is_mm() == 0 ? ModelUnits::inches : ModelUnits::millimetres;
}

/// Makes the blocks of the list those of the model, in millimetres.
void take_blocks(Model& model, const giTriBlockcoSListPtrcoPtrcoSList& list) {
    for (giTriBlock* const block : list) model.blocks.emplace_back(block);
    scale_model(model, model.file_units == ModelUnits::inches ? mm_per_inch : 1.0);
    for (const auto& block : model.blocks) {
        model.invalid_triangles += remove_unusable(*block, max_model_coordinate);
    }
}

constexpr int status_of_end = 1;
constexpr int status_of_stop = 2;

/// Reads all blocks; sets the failure and returns false where that does not work.
bool read_blocks(Model& model, std::unique_ptr<nmkNMTFile> file, nmkProgressBreak& progress,
                 ReadingFailure& failure) {
    static_cast<void>(file->seek(0, apNMKSeekBegin));
    OpenFileMaker maker(model.format, std::move(file));
    progress.send_progress_bar_to_0("Reading");
    nmkTriFileReader reader(reader_name(model.format), progress, 0, 1, 1.0, maker);
    reader.ignore_nan_triangles(1);
    const std::string expected = "; expected " + expected_content(model.format);
    if (!reader.is_valid()) {
        failure.error = {model.name, 0, "the header is bad or cut" + expected};
        return false;
    }
    giTriBlockcoSListPtrcoPtrcoSList list;
    const int status = reader.get_blocks(&list);
    progress.send_progress_bar_to_100();
    failure.is_stopped = status == status_of_stop;
    if (status != status_of_end) {
        failure.error = {model.name, 0, "the data are bad or cut" + expected};
        return false;
    }
    model.invalid_triangles = reader.invalid_data_ignored();
    take_blocks(model, list);
    return true;
}

}  // namespace

std::int64_t Model::triangle_count() const {
    std::int64_t count = 0;
    for (const auto& block : blocks) {
        giTriArrcoFeature triangles;
        if (block->get(triangles) != 0) count += triangles->size();
    }
    return count;
}

std::unique_ptr<Model> read_model(const std::string& file_name, const ReadingOptions& options,
                                  nmkProgressBreak& progress, ReadingFailure& failure) {
    failure = {};
    auto opened = open_model(file_name);
    if (!opened) {
        failure.error = opened.error();
        return nullptr;
    }
    ModelBytes& bytes = **opened;
    auto model = std::make_unique<Model>();
    model->name = nmk_files::input_name(file_name);
    const auto format = format_of(options.format, file_name, *bytes.file);
    if (!format) {
        failure.error = {model->name, 0,
                         "unknown format; expected STL, Flue text, NMT or TTR, or a --format"};
        return nullptr;
    }
    model->format = *format;
    model->file_units = units_of(*format, *bytes.file, options.units);
    return read_blocks(*model, std::move(bytes.file), progress, failure) ? std::move(model)
                                                                         : nullptr;
}

}  // namespace nmk_model
