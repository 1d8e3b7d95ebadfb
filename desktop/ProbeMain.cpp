// Opens the display and ends: with 0 if that went well, otherwise as Qt ends, with its reason on standard
// error.
#include <sys/resource.h>
#include <QGuiApplication>

int main(int argc, char** argv) {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);  // a refusal is an answer, not a crash
  QGuiApplication application(argc, argv);
  return 0;
}
