#pragma once
// Builds the program's real services, registers its forms and starts the start chain.

namespace vt {
class Application;
int RunProgram(Application& app);
} // namespace vt
