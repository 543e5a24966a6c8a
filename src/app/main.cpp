#include <cstddef>

#include "app/Launch.h"

int main(int argc, char* argv[]) {
  return vembrix::runVembrix({argv, static_cast<std::size_t>(argc)});
}
