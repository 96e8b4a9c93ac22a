#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/view/message_box.h"
#include "tools/print/json_text.h"

/// Collects, in their order, what a person, the host or the file system notices of a session.
class CEventRecorder {
public:
    void Box(const TMessageBox &box, TBoxAnswer answer);
    /// The library called the host.
    void Host(std::string_view operation, const std::vector<std::string_view> &arguments);
    /// The library tried to write a file.
    void Save(std::string_view path, bool ok);
    void Add(TJson event) { events_.push_back(std::move(event)); }

    /// The events since the last call.
    TJson Take();

private:
    TJson events_ = TJson::array();
};
