#pragma once
// The About panel of the main screen: the program's name and version.

#include "platform/controls.h"
#include "platform/form.h"

#include <array>

namespace vt {

class About final : public Form {
    Q_OBJECT
public:
    static constexpr const char* kName = "frmAbout";
    explicit About(Runtime& rt);
    void Form_MouseMove(int button, int shift, int x, int y) override;

    std::array<Label*, 3> Label2{};
};

} // namespace vt
