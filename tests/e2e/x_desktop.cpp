#include "tests/e2e/x_desktop.hpp"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <stdexcept>
#include <utility>

#include "tests/e2e/pictures.hpp"
#include "tests/e2e/waiting.hpp"

namespace halcyra {
namespace {

// Windows come and go between two requests; the requests then fail, which their results tell.
int ignore_error(Display*, XErrorEvent*) { return 0; }

bool has_title(Display* display, Window window, const std::string& title) {
  char* name = nullptr;
  const bool found = XFetchName(display, window, &name) != 0 && name == title;
  XFree(name);
  return found;
}

// Depth first, because a window manager puts its own frame around the window.
Window find_titled(Display* display, Window parent, const std::string& title) {
  Window root = 0;
  Window grandparent = 0;
  Window* children = nullptr;
  unsigned int count = 0;
  if (XQueryTree(display, parent, &root, &grandparent, &children, &count) == 0) return 0;
  Window found = 0;
  for (unsigned int i = 0; i < count && found == 0; ++i) {
    found = has_title(display, children[i], title) ? children[i]
                                                   : find_titled(display, children[i], title);
  }
  XFree(children);
  return found;
}

}  // namespace

XDesktop::XDesktop(const std::string& display, std::string title) : title_(std::move(title)) {
  XSetErrorHandler(ignore_error);
  display_ = std::shared_ptr<Display>(XOpenDisplay(display.c_str()), [](Display* opened) {
    if (opened != nullptr) XCloseDisplay(opened);
  });
  if (display_ == nullptr) throw std::runtime_error("cannot open the display " + display);
}

bool XDesktop::find_window() {
  Display* const display = display_.get();
  const bool shown = wait_until([this, display] {
    window_ = find_titled(display, DefaultRootWindow(display), title_);
    return window_shown();
  });
  if (!shown) return false;
  XSelectInput(display, window_, StructureNotifyMask);
  XSetInputFocus(display, window_, RevertToParent, CurrentTime);
  XSync(display, False);
  return true;
}

bool XDesktop::window_shown() {
  XWindowAttributes attributes{};
  return window_ != 0 && XGetWindowAttributes(display_.get(), window_, &attributes) != 0 &&
         attributes.map_state == IsViewable;
}

bool XDesktop::follow_window() {
  if (const Window found = find_titled(display_.get(), DefaultRootWindow(display_.get()), title_)) {
    window_ = found;
    return true;
  }
  return false;
}

bool XDesktop::windows_are_managed() {
  Display* const display = display_.get();
  Atom type = 0;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* value = nullptr;
  XGetWindowProperty(display, DefaultRootWindow(display),
                     XInternAtom(display, "_NET_SUPPORTING_WM_CHECK", False), 0, 1, False,
                     XA_WINDOW, &type, &format, &count, &left, &value);
  XFree(value);
  return count == 1;
}

cv::Size XDesktop::window_size() {
  XWindowAttributes attributes{};
  if (XGetWindowAttributes(display_.get(), window_, &attributes) == 0) {
    return {};
  }
  return {attributes.width, attributes.height};
}

void XDesktop::press(const std::string& keysym_name) {
  Display* const display = display_.get();
  const KeySym symbol = XStringToKeysym(keysym_name.c_str());
  const KeyCode code = XKeysymToKeycode(display, symbol);
  if (code == 0) throw std::runtime_error("no key carries " + keysym_name);
  const bool shifted = XkbKeycodeToKeysym(display, code, 0, 0) != symbol &&
                       XkbKeycodeToKeysym(display, code, 0, 1) == symbol;
  const KeyCode shift = XKeysymToKeycode(display, XStringToKeysym("Shift_L"));
  if (shifted) XTestFakeKeyEvent(display, shift, True, CurrentTime);
  XTestFakeKeyEvent(display, code, True, CurrentTime);
  XTestFakeKeyEvent(display, code, False, CurrentTime);
  if (shifted) XTestFakeKeyEvent(display, shift, False, CurrentTime);
  XSync(display, False);
}

void XDesktop::send_key(const std::string& keysym_name, bool down) {
  Display* const display = display_.get();
  const KeyCode code = XKeysymToKeycode(display, XStringToKeysym(keysym_name.c_str()));
  XTestFakeKeyEvent(display, code, down ? True : False, CurrentTime);
  XSync(display, False);
}

void XDesktop::hold(const std::string& keysym_name) { send_key(keysym_name, true); }

void XDesktop::let_go(const std::string& keysym_name) { send_key(keysym_name, false); }

cv::Mat XDesktop::screenshot() {
  if (!window_shown()) {
    return {};
  }
  const cv::Size size = window_size();
  XImage* const image =
      XGetImage(display_.get(), window_, 0, 0, static_cast<unsigned int>(size.width),
                static_cast<unsigned int>(size.height), AllPlanes, ZPixmap);
  if (image == nullptr) {
    return {};
  }
  const cv::Mat pixels(size, CV_8UC4, image->data, static_cast<std::size_t>(image->bytes_per_line));
  cv::Mat picture = first_three_channels(pixels);
  XDestroyImage(image);
  return picture;
}

void XDesktop::resize(cv::Size size) {
  XResizeWindow(display_.get(), window_, static_cast<unsigned int>(size.width),
                static_cast<unsigned int>(size.height));
  XSync(display_.get(), False);
}

void XDesktop::move(cv::Point place) {
  XMoveWindow(display_.get(), window_, place.x, place.y);
  XSync(display_.get(), False);
}

// By the Extended Window Manager Hints, requests go to the root window.
void XDesktop::ask_manager(const char* request, long first, long second) {
  Display* const display = display_.get();
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window_;
  event.xclient.message_type = XInternAtom(display, request, False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = first;
  event.xclient.data.l[1] = second;
  XSendEvent(display, DefaultRootWindow(display), False,
             SubstructureRedirectMask | SubstructureNotifyMask, &event);
  XSync(display, False);
}

void XDesktop::set_fullscreen(bool wanted) {
  const Atom fullscreen = XInternAtom(display_.get(), "_NET_WM_STATE_FULLSCREEN", False);
  ask_manager("_NET_WM_STATE", wanted ? 1 : 0, static_cast<long>(fullscreen));
}

void XDesktop::minimise() {
  XIconifyWindow(display_.get(), window_, DefaultScreen(display_.get()));
  XSync(display_.get(), False);
}

void XDesktop::bring_back() {
  constexpr long kFromPager = 2;
  ask_manager("_NET_ACTIVE_WINDOW", kFromPager, CurrentTime);
}

void XDesktop::ask_to_close() {
  Display* const display = display_.get();
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window_;
  event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
  event.xclient.data.l[1] = CurrentTime;
  XSendEvent(display, window_, False, NoEventMask, &event);
  XSync(display, False);
}

int XDesktop::times_hidden() {
  while (XPending(display_.get()) > 0) {
    XEvent event{};
    XNextEvent(display_.get(), &event);
    times_hidden_ += event.type == UnmapNotify ? 1 : 0;
  }
  return times_hidden_;
}

}  // namespace halcyra
