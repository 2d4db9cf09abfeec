#pragma once

#include <istream>

namespace brisel::automation {

class LineBuffer;
class Server;

/// Hands every line that has come in over to the server.
void handleLines(LineBuffer& lines, Server& server);
/// The same for what is left at the end of the input.
void handleRest(LineBuffer& lines, Server& server);

/// Serves the lines of the input as they come, until it ends.
void serve(std::istream& input, Server& server);

}  // namespace brisel::automation
