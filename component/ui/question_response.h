// Answers to the component's questions.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef UI_QUESTION_RESPONSE_H
#define UI_QUESTION_RESPONSE_H

#include "host/component.h"
#include "host/messages.h"

/// What a host takes as the response of a question.
using QuestionResponse = void (*)(_GtkWidget*, void*);

/// A response callback as the host's question takes it. The host calls it with the dialog and the
/// answer, so the cast only names the type that the boundary declares.
inline QuestionResponse questionResponse(host::ResponseCallback callback)
{
    return reinterpret_cast<QuestionResponse>(reinterpret_cast<void (*)()>(callback));
}

/// Does `work` when the answer is yes, and closes the question in every case.
template <typename Work>
void finishQuestion(int response, Work work)
{
    if (response == host::responseYes)
        work();
    CloseCurrentPopupDialog();
}

#endif
