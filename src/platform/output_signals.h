#pragma once

namespace quillmark {

/// Lets writes that the system answers with a signal (a file at its size limit, a pipe that nobody
/// reads any more) fail like all others, so that they can be reported and the program is not
/// killed.
void turnOutputSignalsIntoErrors();

}  // namespace quillmark
