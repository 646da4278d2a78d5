#include "gallery/GalleryWindow.h"

#include "gallery/Gallery.h"
#include "gallery/GalleryError.h"
#include "gallery/GalleryScript.h"
#include "gallery/PictureFile.h"
#include "gallery/PollLoop.h"
#include "gui/RootControl.h"
#include "gui/Timer.h"
#include "platform/X11Interface.h"

#include <cmath>
#include <exception>
#include <fstream>

namespace gallery {

namespace {

/// Plays a script beside what the person does.
class WindowScript {
public:
    WindowScript(Gallery& gallery, std::vector<ScriptStep> steps, PollLoop& pollLoop)
        : ui(gallery.userInterface),
          loop(pollLoop),
          player(gallery, std::move(steps), [this](const std::filesystem::path& file) { Shoot(file); }),
          timer(ui.CreateTimer())
    {
        timer->OnElapsed.addHandler(NotifyEvent::handler([this](void*) { GoOn(); }));
        timer->Interval.assign(500);  // the window has come up by then
        timer->Running.assign(true);
    }

    std::exception_ptr error;

private:
    void GoOn()
    {
        timer->Running.assign(false);
        try {
            const int wait = player.Advance();
            if (wait < 0)
                return loop.Quit();
            timer->Interval.assign(std::max(wait, 1));
            timer->Running.assign(true);
        } catch (const GalleryError&) {
            error = std::current_exception();
            loop.Quit();
        }
    }
    void Shoot(const std::filesystem::path& file)
    {
        gui::RootControl& root = ui.GetRootControl();
        gui::Bitmap picture(ui.Backing());
        picture.SetSize(root.GetWidth(), root.GetHeight());
        picture.GetCanvas().Clip.assign(root.GetClientRect());
        root.PaintTree(picture.GetCanvas());
        WritePicture(picture, file);
    }

    gui::UserInterface& ui;
    PollLoop& loop;
    ScriptPlayer player;
    std::unique_ptr<gui::Timer> timer;
};

}  // namespace

void RunGalleryWindow(const GalleryOptions& options)
{
    std::vector<ScriptStep> steps;
    if (!options.script.empty())
        steps = ReadScriptFile(options.script);

    PollLoop loop;
    gui::X11Interface::Options window;
    window.size = Gallery::windowSize;
    window.title = "Sordelin Gallery";
    if (options.scaleIsGiven)
        window.scaleSetting = static_cast<int>(std::lround(options.scale * 100.0f));
    const auto ui = gui::X11Interface::Open(loop, window);
    if (!ui)
        throw GalleryError("there is no display to open a window on; --png, --all and --offscreen need none");
    ui->OnWindowLost.addHandler(NotifyEvent::handler([&loop](void*) { loop.Quit(); }));
    ui->OnCloseRequested.addHandler(NotifyEvent::handler([&loop](void*) { loop.Quit(); }));

    std::unique_ptr<Gallery> gallery;
    std::unique_ptr<WindowScript> script;
    {
        const gui::RootControl::Entry entry(ui->GetRootControl());
        gallery = std::make_unique<Gallery>(*ui);
        gallery->ShowPage(options.page);
        if (!steps.empty())
            script = std::make_unique<WindowScript>(*gallery, std::move(steps), loop);
        ui->Show(true);
    }
    loop.Run();
    const std::exception_ptr error = script ? script->error : nullptr;
    {
        const gui::RootControl::Entry entry(ui->GetRootControl());
        script.reset();
        gallery.reset();
    }
    if (error)
        std::rethrow_exception(error);
}

}  // namespace gallery
