#include "tools/driver/driver_codes.h"

#include "driver/kq_drv.h"

std::string ProxyCodeText(std::uint32_t code) {
    switch (code) {
        case kq_drv::kNoBufferInfo:
            return "the module has no BufferInfo";
        case kq_drv::kNoSetBufferAddr:
            return "the module has no SetBufferAddr";
        case kq_drv::kBufferInfoRefused:
            return "the driver takes no buffer of 256 bytes there";
        case kq_drv::kForeignText:
            return "the driver's text isn't in the room that it was given";
        case kq_drv::kForeignBuffer:
            return "the driver changed where the buffer lies";
        case kq_drv::kRoomNotGrown:
            return "the driver wants more room for a text, but not more than it had, or too much";
        case kq_drv::kRoomTwice:
            return "the driver wants more room for a text a second time";
        default:
            return "";
    }
}
