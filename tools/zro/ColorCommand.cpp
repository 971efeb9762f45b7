#include <memory>
#include <string>

#include "zro/values/ZRColor.h"

#include "tools/zro/CommandLine.h"
#include "tools/zro/Commands.h"
#include "tools/zro/Text.h"
#include "tools/zro/Values.h"

namespace zro {
namespace {

using ZroCommon::ZRColor;
using ZroCommon::ZRValue;
using Json = nlohmann::ordered_json;

ZRColor colorOf(const UnicodeString& text) {
    const ZRValue value = ZRValue::parseColor(text, true);
    return value.isName() ? ZRColor(value.getNameValue()) : ZRColor(value);
}

std::string printedForm(const ZRColor& color) {
    return toUtf8(color.toString(false));
}

Json formsOf(const ZRColor& color) {
    const ZRColor rgb(color.getRGB());
    Json rows;
    rows["color"] = printedForm(color);
    rows["keyword"] = toUtf8(color.getColorName().toString());
    rows["rgb"] = printedForm(rgb);
    if (color.getRGB() <= 0xFFFFFF) {
        rows["channels"] = "rgb(" + std::to_string(color.getR()) + ","
                           + std::to_string(color.getG()) + "," + std::to_string(color.getB())
                           + ")";
        rows["cmyk"] = printedForm(ZRColor::rgb2cmyk(color.getRGB()));
        rows["dark"] = printedForm(color.getDark());
        rows["light"] = printedForm(color.getLight());
    }
    rows["form"] = toUtf8(color.getProfileType().toString());
    if (color.isSeparation()) {
        rows["ink"] = toUtf8(color.getSeparationColorName());
        rows["on screen"] = printedForm(ZRColor(color.getSeparationRGB()));
    }
    return rows;
}

void showColor(Session& session, const std::string& text) {
    const ZRColor color = colorOf(fromUtf8(text));
    if (color.isInvalid()) {
        session.fail("", quoted(text) + " is no colour");
        return;
    }
    const Json rows = formsOf(color);
    if (session.settings().json) {
        Json object = withKeys(rows);
        object["value"] = jsonOf(ZRValue(color));
        printLine(session, object);
        return;
    }
    if (color.getRGB() <= 0xFFFFFF) {
        session.out() << session.outStyle().swatch(color.getR(), color.getG(), color.getB());
    }
    printRows(session, rows);
}

}  // namespace

void addColorCommand(CLI::App& program, Task& task) {
    const auto text = std::make_shared<std::string>();
    CLI::App& command = addCommand(
        program, "color", "Show every form of a colour",
        "A keyword, #RRGGBB, rgb(...), rgb-icc(...), or a colour with icc-color(...) behind\n"
        "it. On a terminal with colours, a sample comes first.",
        "  zro color cornflowerblue\n"
        "  zro color \"#f00 icc-color(#SEPARATION, 'Spot', 0.5)\"\n");
    command.alias("colour");
    addOption(command, "TEXT", *text, " ", "A colour")->required();
    setTask(command, task, text, showColor);
}

}  // namespace zro
