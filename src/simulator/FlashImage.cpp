#include "FlashImage.h"

#include "InputFile.h"
#include "Refusal.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <system_error>
#include <vector>

namespace Simulator
{

namespace
{

// Names can hold anything, file names cannot: every other byte is written as its number.
std::string getFileName(const std::string& boardName)
{
    std::string fileName;
    for (const char character : boardName) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80 && (std::isalnum(byte) != 0 || byte == '-' || byte == '_')) {
            fileName += character;
        } else {
            char code[4];
            std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned>(byte));
            fileName += code;
        }
    }
    return fileName + ".flash";
}

void check(const std::error_code& failure)
{
    if (failure) {
        throw Refusal("The flash cannot be written: " + failure.message());
    }
}

} // namespace

FlashImage::FlashImage(const std::filesystem::path& folder, const std::string& boardName)
    : path(folder / getFileName(boardName))
{
}

void FlashImage::program(const std::string& source) const
{
    std::error_code failure;
    std::filesystem::create_directories(path.parent_path(), failure);
    check(failure);

    std::filesystem::path fresh = path;
    fresh += ".new";
    std::ofstream stream(fresh, std::ios::binary | std::ios::trunc);
    readThrough(source, [&stream](std::string_view block) {
        stream.write(block.data(), static_cast<std::streamsize>(block.size()));
    });
    stream.close();
    if (!stream) {
        check(std::make_error_code(std::errc::io_error));
    }
    std::filesystem::rename(fresh, path, failure);
    check(failure);
}

bool FlashImage::isSame(const std::string& source) const
{
    std::ifstream image(path, std::ios::binary);
    std::vector<char> read;
    bool same = true;
    readThrough(source, [&](std::string_view block) {
        read.resize(block.size());
        image.read(read.data(), static_cast<std::streamsize>(read.size()));
        same = same && image.gcount() == static_cast<std::streamsize>(block.size()) &&
               std::equal(block.begin(), block.end(), read.begin());
    });
    return same && image.peek() == std::ifstream::traits_type::eof();
}

} // namespace Simulator
