#pragma once

/// While it lives, what Qt and its plug-ins report goes to the log too, with Qt's own category, beside the place where it went before.
/// One at a time.
class COrmQtMessages
{
public:
    COrmQtMessages();
    ~COrmQtMessages();
    COrmQtMessages(const COrmQtMessages&) = delete;
    COrmQtMessages& operator=(const COrmQtMessages&) = delete;
};
