// Opens the display and ends with exit code 0. If it can't, Qt aborts with the reason on standard error.
#include <sys/resource.h>
#include <QGuiApplication>

int main(int argc, char** argv) {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);  // Qt aborts if it can't open the display
  QGuiApplication application(argc, argv);
  return 0;
}
