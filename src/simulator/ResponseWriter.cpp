#include "ResponseWriter.h"

#include "Replies.h"

#include <climits>
#include <string_view>

namespace Simulator
{

ResponseWriter::ResponseWriter(const Output& answers, const Patience& waiting)
    : output(answers)
    , patience(waiting)
{
}

void ResponseWriter::write(const std::string& answer) const
{
    // Up to this size a pipe hands a write on as a unit.
    const std::size_t markOffset = answer.size() > PIPE_BUF ? getMarkOffset(answer) : 0;
    const std::string_view bytes(answer);
    output.write(bytes.substr(0, markOffset));
    output.write(bytes.substr(markOffset));
}

void ResponseWriter::writePieces(const std::vector<std::string>& pieces,
                                 std::chrono::milliseconds pause) const
{
    for (const std::string& piece : pieces) {
        if (&piece != &pieces.front()) {
            patience.waitForReader(output);
            patience.wait(pause);
        }
        output.write(piece);
    }
}

} // namespace Simulator
