#pragma once
// The About panel of the main screen: the program's name and version.

#include "core/app_form.h"
#include "platform/controls.h"

#include <array>

namespace vt {

class About final : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "frmAbout";
    explicit About(Runtime& rt);
    void Form_MouseMove(int button, int shift, int x, int y) override;

    std::array<Label*, 3> Label2{};
};

} // namespace vt
