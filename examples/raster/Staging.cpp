#include "raster/Staging"

#include <stdlib.h>

#include <cerrno>
#include <cstring>
#include <system_error>

#include "raster/Failure"

namespace tools {

namespace fs = std::filesystem;

namespace {

constexpr fs::perms kWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;

[[noreturn]] void refuse(const fs::path& target, const std::string& reason)
{
    throw Failure("Cannot write '" + target.string() + "': " + reason + ".");
}

}  // namespace

fs::path placeOf(const std::string& name)
{
    constexpr int kMostLinks = 40;
    std::error_code ignored;
    fs::path place = fs::absolute(name, ignored);
    for (int i = 0; i < kMostLinks && fs::is_symlink(place, ignored); ++i) {
        place = place.parent_path() / fs::read_symlink(place, ignored);
    }
    const fs::path folder = fs::weakly_canonical(place.parent_path(), ignored);
    return folder.empty() ? place : folder / place.filename();
}

Staging::Staging(const std::string& target) : m_target(placeOf(target))
{
    std::error_code ignored;
    const fs::file_status status = fs::status(m_target, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        refuse(target, "it is not a regular file");
    }
    // Moving a file over another one would not ask for that.
    if (fs::exists(status) && (status.permissions() & kWrite) == fs::perms::none) {
        refuse(target, "it is write-protected");
    }
    std::string folder = (m_target.parent_path() / ".zet-XXXXXX").string();
    if (!mkdtemp(folder.data())) {
        refuse(target, std::strerror(errno));
    }
    m_folder = folder;
}

Staging::~Staging()
{
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

void Staging::commit(const std::vector<std::string>& companions)
{
    std::vector<fs::path> stale;
    for (const std::string& companion : companions) {
        const fs::path name = m_target.filename().string() + companion;
        if (!fs::exists(m_folder / name)) {
            stale.push_back(m_target.parent_path() / name);
        }
    }
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_folder, error)) {
        if (entry.path().filename() != m_target.filename()) {
            fs::rename(entry.path(), m_target.parent_path() / entry.path().filename(), error);
        }
        if (error) {
            refuse(m_target, error.message());
        }
    }
    fs::rename(path(), m_target, error);
    if (error) {
        refuse(m_target, error.message());
    }
    for (const fs::path& file : stale) {
        fs::remove(file, error);
    }
}

}  // namespace tools
