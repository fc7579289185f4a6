// Drives the openssl program.
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
    : folder(std::move(folderOfFiles)),
      name(std::move(nameOfFiles)), own{folder + "/" + name + ".pem", folder + "/" + name + ".key"}
{
    // What `openssl ca` keeps books in, and how it issues.
    write(folder + "/" + name + ".index", "");
    write(folder + "/" + name + ".cnf", "[req]\ndistinguished_name = subject\n[subject]\n"
                                        "[ca]\ndefault_ca = authority\n"
                                        "[authority]\ndatabase = " +
                                            folder + "/" + name + ".index\nnew_certs_dir = " + folder +
                                            "\nrand_serial = yes\ndefault_md = sha256\npolicy = any\n"
                                            "unique_subject = no\n"
                                            "[any]\ncommonName = supplied\n");
    openssl("req -x509" + std::string(newKey) + " -keyout " + own.key + " -out " + own.certificate +
            " -days 2 -subj /CN=" + name + " -addext basicConstraints=critical,CA:TRUE");
}

Certificate CertificateAuthority::issue(const std::string& file, const std::string& names, bool expired) const
{
    const std::string stem = folder + "/" + file;
    write(stem + ".ext", "subjectAltName = " + names + "\n");
    openssl("req -new" + std::string(newKey) + " -keyout " + stem + ".key -out " + stem +
            ".csr -subj /CN=server");
    openssl("ca -batch -notext -in " + stem + ".csr -out " + stem + ".pem -cert " + own.certificate +
            " -keyfile " + own.key + " -extfile " + stem + ".ext" +
            (expired ? " -startdate 20200101000000Z -enddate 20200102000000Z" : " -days 2"));
    return {stem + ".pem", stem + ".key"};
}

void CertificateAuthority::openssl(const std::string& arguments) const
{
    std::istringstream words(arguments);
    std::vector<std::string> command{systemProgram("openssl")};
    command.insert(command.end(), std::istream_iterator<std::string>(words), {});
    runProgram({command, folder + "/" + name + ".log", {"OPENSSL_CONF=" + folder + "/" + name + ".cnf"}});
}

} // namespace servers
