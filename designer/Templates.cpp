// Texts that the designer makes.

#include "designer/Templates.h"

#include "designer/FormDesigner.h"

namespace kx::designer {

std::string NewFormText(const std::string& fileName) {
    const std::string name = fileName.substr(0, fileName.find_last_of('.'));
    if (!IsValidIdent(name)) {
        throw EDesignError("A form file is named for its form: " + name + " cannot be the name of a form");
    }
    return "object " + name + ": T" + name +
           "\n"
           "  Left = 0\n"
           "  Top = 0\n"
           "  Caption = '" +
           name +
           "'\n"
           "  ClientHeight = 300\n"
           "  ClientWidth = 400\n"
           "  Color = clBtnFace\n"
           "  Font.Charset = DEFAULT_CHARSET\n"
           "  Font.Color = clWindowText\n"
           "  Font.Height = -11\n"
           "  Font.Name = 'Tahoma'\n"
           "  Font.Style = []\n"
           "  PixelsPerInch = 96\n"
           "end\n";
}

} // namespace kx::designer
