// A library with routines for "declare". None is ever entered: what a test finds changed, the system changed.

extern "C" {
__attribute__((visibility("default"))) int entered = 0;

__attribute__((visibility("default"))) int AddNumbers(int a, int b) {
  ++entered;
  return a + b;
}
__attribute__((visibility("default"))) void FillText(unsigned short* text) {
  ++entered;
  text[0] = 0;
}
}
