#include "tests/support/places.h"

std::string sourcePath(std::string_view relative) {
    return TAVRO_SOURCE_DIR "/" + std::string(relative);
}

std::string stagePath(std::string_view relative) {
    return TAVRO_STAGE "/" + std::string(relative);
}
