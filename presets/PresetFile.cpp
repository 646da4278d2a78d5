#include "presets/PresetFile.h"

#include "foundation/AtomicFile.h"
#include "foundation/OpenFile.h"

#include <filesystem>
#include <sstream>
#include <system_error>

namespace {

/// Anything else that has a name, a pipe for one, might keep its reader waiting for ever.
bool isRegularFile(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

}  // namespace

bool PresetFile::read(PresetLoader& loader, ErrorReporter& outcome, int requiredVersion) const
{
    if (!isRegularFile(path)) {
        std::istringstream nothing;
        return loader.readPreset(outcome, nothing, requiredVersion);
    }
    const auto stream = openFile(path, std::ios_base::in | std::ios_base::binary);
    return loader.readPreset(outcome, *stream, requiredVersion);
}

bool PresetFile::write(const PresetWriter& writer, ErrorReporter& outcome, int version, Form form) const
{
    AtomicFile file(path);
    if (form == Form::Binary)
        writer.writePreset(file.stream(), version);
    else
        writer.writeText(file.stream(), version);
    return file.commit(outcome);
}

bool PresetFile::rewrite(const PresetWriter& writer, ErrorReporter& outcome, int version, int firstIndex,
                         int count) const
{
    constexpr const char* notOfTheKind = "The file holds no preset of this kind";
    if (!isRegularFile(path)) {
        outcome.reportError(ErrorReporter::failure, notOfTheKind);
        return false;
    }
    std::stringstream copy;
    copy << openFile(path, std::ios_base::in | std::ios_base::binary)->rdbuf();
    if (!writer.writePreset(copy, version, firstIndex, count)) {
        outcome.reportError(ErrorReporter::failure, notOfTheKind);
        return false;
    }
    AtomicFile file(path);
    file.stream() << copy.view();
    return file.commit(outcome);
}
