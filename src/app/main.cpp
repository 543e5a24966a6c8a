#include "app/Launch.h"

int main() {
  return vembrix::runVembrix();
}
