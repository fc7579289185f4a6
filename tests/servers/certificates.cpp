// Drives the openssl program.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/servers/certificates.h"

#include "tests/servers/server_process.h"

#include <fstream>
#include <iterator>
#include <sstream>
#include <utility>
#include <vector>

namespace servers {

namespace {

void write(const std::string& path, const std::string& content)
{
    std::ofstream(path, std::ios::binary) << content;
}

constexpr const char* newKey = " -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes";

} // namespace

CertificateAuthority::CertificateAuthority(std::string folderOfFiles, std::string nameOfFiles)
    : folder_(std::move(folderOfFiles)),
      name_(std::move(nameOfFiles)), own_{folder_ + "/" + name_ + ".pem", folder_ + "/" + name_ + ".key"}
{
    // What `openssl ca` keeps books in, and how it issues.
    write(folder_ + "/" + name_ + ".index", "");
    write(folder_ + "/" + name_ + ".cnf", "[req]\ndistinguished_name = subject\n[subject]\n"
                                          "[ca]\ndefault_ca = authority\n"
                                          "[authority]\ndatabase = " +
                                              folder_ + "/" + name_ + ".index\nnew_certs_dir = " + folder_ +
                                              "\nrand_serial = yes\ndefault_md = sha256\npolicy = any\n"
                                              "unique_subject = no\n"
                                              "[any]\ncommonName = supplied\n");
    openssl("req -x509" + std::string(newKey) + " -keyout " + own_.key + " -out " + own_.certificate +
            " -days 2 -subj /CN=" + name_ + " -addext basicConstraints=critical,CA:TRUE");
}

Certificate CertificateAuthority::issue(const std::string& file, const std::string& names, bool expired) const
{
    const std::string stem = folder_ + "/" + file;
    write(stem + ".ext", "subjectAltName = " + names + "\n");
    openssl("req -new" + std::string(newKey) + " -keyout " + stem + ".key -out " + stem +
            ".csr -subj /CN=server");
    openssl("ca -batch -notext -in " + stem + ".csr -out " + stem + ".pem -cert " + own_.certificate +
            " -keyfile " + own_.key + " -extfile " + stem + ".ext" +
            (expired ? " -startdate 20200101000000Z -enddate 20200102000000Z" : " -days 2"));
    return {stem + ".pem", stem + ".key"};
}

void CertificateAuthority::openssl(const std::string& arguments) const
{
    std::istringstream words(arguments);
    std::vector<std::string> command{systemProgram("openssl")};
    command.insert(command.end(), std::istream_iterator<std::string>(words), {});
    runProgram({command, folder_ + "/" + name_ + ".log", {"OPENSSL_CONF=" + folder_ + "/" + name_ + ".cnf"}});
}

} // namespace servers
