#ifndef SIMULATOR_FLASH_IMAGE_H
#define SIMULATOR_FLASH_IMAGE_H

#include <filesystem>
#include <string>

namespace Simulator
{

/// The contents of the flash memory of one board, kept in a file so that they outlive the program.
class FlashImage
{
public:
    /// `folder` is made when it is needed.
    FlashImage(const std::filesystem::path& folder, const std::string& boardName);

    const std::filesystem::path& getPath() const { return path; }

    /// Replaces the contents by those of the file `source`, in one step. Throws Refusal with the
    /// system's reason; then the old contents stay.
    void program(const std::string& source) const;

    /// Whether the contents are those of the file `source`. Throws Refusal when either cannot be
    /// read.
    bool isSame(const std::string& source) const;

private:
    std::filesystem::path path;
};

} // namespace Simulator

#endif
