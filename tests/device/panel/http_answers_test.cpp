// Tests of requests and answers as they stand on the line.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "device/panel/http_answers.h"

#include "tests/device/panel/socket_pair.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <stdexcept>
#include <thread>

namespace quelm::tests {
namespace {

using namespace device;

class HttpAnswersTest : public ::testing::Test {
protected:
    /// What is answered to these bytes.
    std::string answerTo(const std::string& bytes,
                         std::chrono::milliseconds patience = std::chrono::seconds(10))
    {
        HttpAnswers answers("127.0.0.1", patience, [this](const PanelRequest& request) {
            asked.push_back(request);
            if (request.path == "/throws")
                throw std::runtime_error("a secret");
            return answer;
        });
        SocketPair pair;
        std::jthread server([&] {
            answers.serve(pair.server);
            ::shutdown(pair.server.get(), SHUT_RDWR);
        });
        pair.send(bytes);
        pair.endSending();
        return pair.received();
    }
    std::string request(const std::string& line, const std::string& headers = "Host: localhost:8631\r\n")
    {
        return answerTo(line + " HTTP/1.1\r\n" + headers + "\r\n");
    }

    TemporaryFolder folder;
    PanelAnswer answer{200, "text/plain", "the body", {}};
    std::vector<PanelRequest> asked;
};

std::string statusOf(const std::string& answer) { return answer.substr(0, answer.find("\r\n")).substr(9, 3); }
std::string bodyOf(const std::string& answer) { return answer.substr(answer.find("\r\n\r\n") + 4); }
bool holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST_F(HttpAnswersTest, AnAnswerForbidsScriptsAndToBeKept)
{
    const std::string answered = request("GET /jobs/%31?before=7&part=2&x=y");
    EXPECT_EQ(statusOf(answered), "200");
    EXPECT_EQ(bodyOf(answered), "the body");
    ASSERT_EQ(asked.size(), 1U);
    EXPECT_EQ(asked[0].path, "/jobs/1");
    EXPECT_EQ(asked[0].before, "7");
    EXPECT_EQ(asked[0].part, "2");
    for (const char* header :
         {"\r\nContent-Security-Policy: default-src 'none'; img-src 'self'; style-src 'self';",
          "\r\nX-Content-Type-Options: nosniff\r\n", "\r\nCache-Control: no-store\r\n",
          "; base-uri 'none'; form-action 'none'; frame-ancestors 'none'\r\n",
          "\r\nCross-Origin-Resource-Policy: same-origin\r\n", "\r\nConnection: close\r\n",
          "\r\nContent-Length: 8\r\n", "\r\nReferrer-Policy: no-referrer\r\n"})
        EXPECT_TRUE(holds(answered, header)) << header << "\n" << answered;
}

TEST_F(HttpAnswersTest, HeadAnswersWithoutABody)
{
    const std::string answered = request("HEAD /");
    EXPECT_EQ(statusOf(answered), "200");
    EXPECT_EQ(bodyOf(answered), "");
    EXPECT_TRUE(holds(answered, "Content-Length: 8\r\n"));
}

TEST_F(HttpAnswersTest, NothingButGetAndHeadIsAllowed)
{
    for (const char* method : {"POST", "PUT", "DELETE", "PATCH", "OPTIONS", "TRACE", "CONNECT"}) {
        const std::string answered = request(
            std::string(method) + " /", "Host: localhost\r\nContent-Length: 5\r\nExpect: 100-continue\r\n");
        EXPECT_EQ(statusOf(answered), "405") << method;
        EXPECT_TRUE(holds(answered, "\r\nAllow: GET, HEAD\r\n")) << method;
        EXPECT_TRUE(holds(answered, "\r\nCache-Control: no-store\r\n")) << method;
    }
    EXPECT_TRUE(asked.empty());
}

TEST_F(HttpAnswersTest, OnlyOurOwnNamesAreAnsweredTo)
{
    EXPECT_EQ(statusOf(request("GET /", "Host: attacker.example:8631\r\n")), "421");
    EXPECT_EQ(statusOf(request("GET /", "Host: 127.0.0.1\r\nHost: attacker.example\r\n")), "400");
    EXPECT_EQ(statusOf(request("GET /", "")), "400");
    EXPECT_EQ(statusOf(request("POST /", "Host: attacker.example\r\n")), "421");
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(statusOf(request("GET /", "Host: [::1]:8631\r\n")), "200");
    EXPECT_EQ(statusOf(answerTo("GET / HTTP/1.0\r\nHost: 127.0.0.1\r\n\r\n")), "200");
}

TEST_F(HttpAnswersTest, MalformedRequestsAreRefusedOrNotAnswered)
{
    for (const char* line :
         {"GET", "GET /", "get / HTTP/1.1", "BREW / HTTP/1.1", "GET / HTTP/9.9", "GET * HTTP/1.1",
          "GET jobs HTTP/1.1", "GET  HTTP/1.1", "GET http://localhost/ HTTP/1.1", "\xFF\xFE"}) {
        const std::string answered = answerTo(std::string(line) + "\r\nHost: localhost\r\n\r\n");
        EXPECT_TRUE(answered.empty() || statusOf(answered) == "400") << line << "\n" << answered;
    }
    EXPECT_EQ(answerTo("\r\n\r\n").find(" 200 "), std::string::npos);
    EXPECT_TRUE(asked.empty());
}

TEST_F(HttpAnswersTest, LongRequestsAreRefused)
{
    EXPECT_EQ(statusOf(request("GET /" + std::string(9000, 'x'))), "414");
    EXPECT_EQ(statusOf(request("GET /", "Host: localhost\r\nX: " + std::string(40'000, 'x') + "\r\n")),
              "431");
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(statusOf(request("GET /", "Host: localhost\r\nCookie: " + std::string(6000, 'x') + "\r\n")),
              "200");
}

TEST_F(HttpAnswersTest, PartsThatAreAskedForDoNotCutTheAnswer)
{
    std::string ranges = "Range: bytes=0-0";
    for (int i = 0; i < 1900; ++i)
        ranges += ",0-0";
    EXPECT_EQ(bodyOf(request("GET /", "Host: localhost\r\n" + ranges + "\r\n")), "the body");
    EXPECT_EQ(statusOf(request("GET /", "Host: localhost\r\nRange: bytes=x\r\n")), "200");
}

TEST_F(HttpAnswersTest, AFileIsSentWholeHoweverLong)
{
    std::string content;
    for (int i = 0; i < 100'000; ++i)
        content += std::to_string(i) + " ";
    answer = {200, "image/tiff", "", writeFile(folder / "file.tif", content)};
    const std::string answered = request("GET /file");
    EXPECT_EQ(statusOf(answered), "200");
    EXPECT_TRUE(bodyOf(answered) == content);
    EXPECT_TRUE(holds(answered, "\r\nContent-Type: image/tiff\r\n"));
    EXPECT_EQ(bodyOf(request("HEAD /file")), "");
    writeFile(folder / "file.tif", "");
    EXPECT_EQ(statusOf(request("GET /file")), "200");
    std::filesystem::remove(folder / "file.tif");
    EXPECT_EQ(statusOf(request("GET /file")), "404");
}

TEST_F(HttpAnswersTest, AFailureTellsNoSecrets)
{
    const std::string answered = request("GET /throws");
    EXPECT_EQ(statusOf(answered), "500");
    EXPECT_FALSE(holds(answered, "a secret"));
    EXPECT_TRUE(holds(answered, "<!DOCTYPE html>"));
}

TEST_F(HttpAnswersTest, ABrowserThatTakesNothingIsLeft)
{
    answer.body.assign(10'000'000, 'x');
    HttpAnswers answers("127.0.0.1", std::chrono::milliseconds(50),
                        [this](const PanelRequest&) { return answer; });
    SocketPair pair;
    pair.send("GET / HTTP/1.1\r\nHost: localhost\r\n\r\n");
    answers.serve(pair.server); // comes to an end
    ::shutdown(pair.server.get(), SHUT_RDWR);
    EXPECT_LT(pair.received().size(), answer.body.size());
}

TEST_F(HttpAnswersTest, TheProcesssSignalsStayAsTheyAre)
{
    struct sigaction before = {};
    struct sigaction after = {};
    ::sigaction(SIGPIPE, nullptr, &before);
    const HttpAnswers answers("127.0.0.1", std::chrono::seconds(1),
                              [this](const PanelRequest&) { return answer; });
    ::sigaction(SIGPIPE, nullptr, &after);
    EXPECT_EQ(before.sa_handler, after.sa_handler);
}

} // namespace
} // namespace quelm::tests
