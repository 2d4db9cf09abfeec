#include "automation/Serve.h"

#include <array>
#include <string_view>

#include "automation/LineBuffer.h"
#include "automation/Server.h"

namespace brisel::automation {

namespace {

void handleLine(const LineBuffer::Line& line, Server& server) {
  if (line.tooLong) {
    server.refuse("the line is too long");
  } else {
    server.handle(line.text);
  }
}

}  // namespace

void handleLines(LineBuffer& lines, Server& server) {
  while (const auto line = lines.next()) handleLine(*line, server);
}

void handleRest(LineBuffer& lines, Server& server) {
  if (const auto line = lines.rest()) handleLine(*line, server);
}

void serve(std::istream& input, Server& server) {
  LineBuffer lines;
  std::array<char, 65536> bytes{};
  // Waits for the first byte, then takes what has come with it without waiting for more.
  while (input.peek() != std::istream::traits_type::eof()) {
    const std::streamsize count =
        input.readsome(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (count <= 0) break;
    lines.append({bytes.data(), static_cast<std::size_t>(count)});
    handleLines(lines, server);
  }
  handleRest(lines, server);
}

}  // namespace brisel::automation
