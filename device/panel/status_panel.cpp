// Joins the pages and the server.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/status_panel.h"

#include "base/net/listening_sockets.h"
#include "device/panel/http_answers.h"
#include "device/panel/http_connections.h"
#include "device/panel/panel_site.h"

namespace quelm::device {

struct StatusPanel::State {
    State(const StateFolder& folder, DeviceLog& log, PanelSettings given)
        : settings(std::move(given)), source{folder, log, settings},
          answers(settings.address, settings.patience,
                  [this](const PanelRequest& request) { return answerTo(source, request); }),
          listening(std::move(listenOn({settings.address}, settings.port).front())),
          connections(std::move(listening.socket), settings.mostConnections,
                      [this](const FileHandle& socket) { answers.serve(socket); })
    {
    }

    PanelSettings settings;
    PanelSource source;
    HttpAnswers answers;
    ListeningSocket listening;
    HttpConnections connections;
};

StatusPanel::StatusPanel(const StateFolder& folder, DeviceLog& log, PanelSettings settings)
    : state_(std::make_unique<State>(folder, log, std::move(settings)))
{
}

StatusPanel::~StatusPanel() = default;

std::string StatusPanel::address() const { return "http://" + state_->listening.address + "/"; }

} // namespace quelm::device
