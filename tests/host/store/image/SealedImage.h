#pragma once

#include "host/store/image/ImageFormat.h"

#include <cstring>
#include <string>

/// Gives an image that was changed on purpose the checksum and the size that it would have.
inline void sealImage(std::string& image) {
    vex::ImageFormat::Header header{};
    if (image.size() < sizeof header) {
        return;
    }
    std::memcpy(&header, image.data(), sizeof header);
    header.size = image.size();
    header.checksum = 0;
    std::memcpy(image.data(), &header, sizeof header);
    vex::ImageChecksum sum;
    sum.add(image.data(), image.size());
    header.checksum = sum.value();
    std::memcpy(image.data(), &header, sizeof header);
}
