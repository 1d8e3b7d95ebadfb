#include "desktop/TaskBar.h"

#include <xcb/xcb.h>
#include <QGuiApplication>
#include <QWindow>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace Desktop {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

xcb_atom_t Atom(xcb_connection_t* display, const char* name) {
  const auto cookie = xcb_intern_atom(display, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(xcb_intern_atom_reply(display, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

}  // namespace

void KeepFromTaskBar(QWindow& window) {
  auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  xcb_connection_t* display = x11 ? x11->connection() : nullptr;
  if (!display) return;
  // Qt adds its own states to those that it finds here when the window is shown.
  const xcb_atom_t states[] = {Atom(display, "_NET_WM_STATE_SKIP_TASKBAR"),
                               Atom(display, "_NET_WM_STATE_SKIP_PAGER")};
  xcb_change_property(display, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                      Atom(display, "_NET_WM_STATE"), XCB_ATOM_ATOM, 32, 2, states);
}

}  // namespace Desktop
