#include "preset/PresetTool.h"

#include <CLI/CLI.hpp>

#include <iostream>

int main(int argumentCount, char** arguments)
{
    CLI::App app("Looks into presets of Sordelin 2, of the whole plug-in (.mvp) and of sections, and turns\n"
                 "their text form, which people can edit, into the binary one and back.",
                 "sordelin-preset");
    app.require_subcommand(1);
    std::vector<std::filesystem::path> shown;
    std::filesystem::path from, to, folder;
    CLI::App* const show = app.add_subcommand("show", "Print what presets say, and what they change");
    show->add_option("FILE", shown, "Presets")->required()->type_name("");
    CLI::App* const text = app.add_subcommand("text", "Write a preset as text");
    CLI::App* const binary = app.add_subcommand("binary", "Write a preset in binary form");
    for (CLI::App* const conversion : {text, binary}) {
        conversion->add_option("FROM", from, "A preset of either form")->required()->type_name("");
        conversion->add_option("TO", to, "File to write, over what is there")->required()->type_name("");
    }
    CLI::App* const check = app.add_subcommand("check", "Read all presets in a folder");
    check->add_option("FOLDER", folder, "With all folders in it")->required()->type_name("");
    CLI11_PARSE(app, argumentCount, arguments);

    try {
        for (const auto& file : shown)
            showPreset(file, std::cout);
        if (*text || *binary)
            convertPreset(from, to, *text ? PresetForm::Text : PresetForm::Binary);
        return *check && checkPresets(folder, std::cout) > 0 ? 1 : 0;
    } catch (const PresetToolError& error) {
        std::cerr << "sordelin-preset: " << error.what() << '\n';
        return 1;
    }
}
