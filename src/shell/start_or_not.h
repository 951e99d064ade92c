#pragma once
// The start form. It stays hidden: it checks that the program's text comes through as Unicode
// and then loads the desktop, which carries the start on. Only when the check fails does it show
// itself as a warning with three steps of advice and three buttons.

#include "core/app_form.h"
#include "platform/controls.h"

namespace vt {

class StartOrNot : public AppForm {
    Q_OBJECT
public:
    static constexpr const char* kName = "StartOrNot";
    explicit StartOrNot(Runtime& rt);

    // True when the program's text comes through as Unicode: the first character of CheckText
    // has the code 26102 ("时").
    bool TextCheckPasses() const;

    void Form_Load() override;

    Label* Label1 = nullptr;
    Label* Label2 = nullptr;
    Label* Label4 = nullptr;
    Shape* Shape1 = nullptr;
    ImageBox* Image1 = nullptr;
    ImageBox* Image2 = nullptr;
    ImageBox* Image3 = nullptr;
    OptionButton* Option1 = nullptr;
    OptionButton* Option2 = nullptr;
    OptionButton* Option3 = nullptr;
    CommandButton* Command1 = nullptr;
    CommandButton* Command2 = nullptr;
    CommandButton* Command3 = nullptr;

    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Option_Click(int step);

protected:
    // The text written into the program as "时".
    virtual QString CheckText() const;

private:
    void fitFrame();
};

} // namespace vt
