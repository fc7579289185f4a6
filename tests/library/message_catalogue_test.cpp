// The message catalogue and character set functions that the library offers to its host.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/library/host_gettext.h"
#include "tests/support/build_paths.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <libintl.h>

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <string>

namespace {

// The test catalogue is German, kept in ISO-8859-1.
const char* const domain = "lanfax-test";
const std::string catalogues = build_paths::inBuild("tests/library/locale");
const char* const recipientsUtf8 = "Empf\xc3\xa4nger";
const char* const recipientsLatin1 = "Empf\xe4nger";

class Library : public testing::Test {
protected:
    void SetUp() override
    {
        handle = dlopen(build_paths::componentLibrary().c_str(), RTLD_LAZY | RTLD_LOCAL);
        ASSERT_TRUE(handle) << dlerror();
    }

    template <typename Function>
    Function* find(const char* name) const
    {
        void* address = dlsym(handle, name);
        EXPECT_TRUE(address) << name;
        return reinterpret_cast<Function*>(address);
    }

    void* handle = nullptr; // stays loaded, as hosts keep it
};

class MessageCatalogue : public Library {
protected:
    void SetUp() override
    {
        Library::SetUp();
        if (HasFatalFailure())
            return;
        // Catalogues are not asked for in the "C" locale; any other one goes by LANGUAGE. Releases of libintl
        // from 0.23 on count "C.UTF-8" as "C", and so need a machine that has another one.
        ASSERT_TRUE(std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr ||
                    std::setlocale(LC_ALL, "C.UTF-8") != nullptr);
        setenv("LANGUAGE", "de", 1);
        bindDomain = find<char*(const char*, const char*)>("bindtextdomain");
        ASSERT_TRUE(bindDomain);
        ASSERT_STREQ(bindDomain(domain, catalogues.c_str()), catalogues.c_str());
        ASSERT_STREQ(find<char*(const char*)>("textdomain")(""), "messages");
        setCodeset = find<char*(const char*, const char*)>("bind_textdomain_codeset");
        ASSERT_STREQ(setCodeset(domain, "UTF-8"), "UTF-8");
    }

    void makeDomainCurrent() const
    {
        const auto setDomain = find<char*(const char*)>("textdomain");
        ASSERT_STREQ(setDomain(domain), domain);
    }

    char* (*bindDomain)(const char*, const char*) = nullptr;
    char* (*setCodeset)(const char*, const char*) = nullptr;
};

TEST_F(MessageCatalogue, GettextTranslatesInTheCurrentDomain)
{
    makeDomainCurrent();
    EXPECT_STREQ(find<char*(const char*)>("gettext")("Recipients"), recipientsUtf8);
    EXPECT_STREQ(find<char*(const char*)>("gettext")("Not in the catalogue"), "Not in the catalogue");
}

TEST_F(MessageCatalogue, GettextIsNotTheHostsFunctionOfThatName)
{
    makeDomainCurrent();
    const auto gettextOfLibrary = find<char*(const char*)>("gettext");
    const int before = hostGettextCalls();
    EXPECT_STREQ(gettextOfLibrary("Recipients"), recipientsUtf8);
    EXPECT_EQ(hostGettextCalls(), before);

    EXPECT_STREQ(callHostGettext("Recipients"), hostGettextAnswer);
    EXPECT_EQ(hostGettextCalls(), before + 1);
    EXPECT_STREQ(gettextOfLibrary("Recipients"), recipientsUtf8);
    EXPECT_EQ(hostGettextCalls(), before + 1);
}

TEST_F(MessageCatalogue, LeavesTheCLibrarysDomainsAlone)
{
    makeDomainCurrent();
    EXPECT_STREQ(::textdomain(nullptr), "messages");
    EXPECT_STREQ(::dgettext(domain, "Recipients"), "Recipients");
    ::bindtextdomain("another-domain", "/nowhere");
    EXPECT_STRNE(bindDomain("another-domain", nullptr), "/nowhere");
}

TEST_F(MessageCatalogue, DgettextAndDcgettextTranslateInANamedDomain)
{
    EXPECT_STREQ((find<char*(const char*, const char*)>("dgettext")(domain, "Recipients")), recipientsUtf8);
    EXPECT_STREQ((find<char*(const char*, const char*, int)>("dcgettext")(domain, "Recipients", LC_MESSAGES)),
                 recipientsUtf8);
    EXPECT_STREQ((find<char*(const char*, const char*)>("dgettext")("no-such-domain", "Recipients")),
                 "Recipients");
}

TEST_F(MessageCatalogue, NgettextChoosesThePluralForm)
{
    makeDomainCurrent();
    const auto plural = find<char*(const char*, const char*, unsigned long)>("ngettext");
    EXPECT_STREQ(plural("%d page", "%d pages", 1), "%d Seite");
    EXPECT_STREQ(plural("%d page", "%d pages", 2), "%d Seiten");
    EXPECT_STREQ(plural("%d line", "%d lines", 1), "%d line");
    EXPECT_STREQ(plural("%d line", "%d lines", 0), "%d lines");
}

TEST_F(MessageCatalogue, TextdomainTellsAndResetsTheCurrentDomain)
{
    const auto setDomain = find<char*(const char*)>("textdomain");
    EXPECT_STREQ(setDomain(nullptr), "messages");
    EXPECT_STREQ(setDomain(domain), domain);
    EXPECT_STREQ(setDomain(nullptr), domain);
    EXPECT_STREQ(setDomain(""), "messages");
}

TEST_F(MessageCatalogue, BindtextdomainTellsTheFolder)
{
    EXPECT_STREQ(bindDomain(domain, nullptr), catalogues.c_str());
}

TEST_F(MessageCatalogue, BindTextdomainCodesetChoosesTheCharacterSetOfTranslations)
{
    EXPECT_STREQ(setCodeset(domain, "ISO-8859-1"), "ISO-8859-1");
    EXPECT_STREQ((find<char*(const char*, const char*)>("dgettext")(domain, "Recipients")), recipientsLatin1);
}

class CharacterSets : public Library {
protected:
    using Converter = void*;

    void SetUp() override
    {
        Library::SetUp();
        if (HasFatalFailure())
            return;
        open = find<Converter(const char*, const char*)>("libiconv_open");
        convert = find<std::size_t(Converter, const char**, std::size_t*, char**, std::size_t*)>("libiconv");
        close = find<int(Converter)>("libiconv_close");
        ASSERT_TRUE(open && convert && close);
    }

    static Converter failed() { return reinterpret_cast<Converter>(-1); }

    /// The whole text converted, or what errno names when it could not be.
    std::string converted(const char* to, const char* from, const std::string& text) const
    {
        const Converter converter = open(to, from);
        if (converter == failed())
            return "no such conversion";
        const char* in = text.data();
        std::size_t inLeft = text.size();
        char buffer[64];
        char* out = buffer;
        std::size_t outLeft = sizeof buffer;
        errno = 0;
        const std::size_t result = convert(converter, &in, &inLeft, &out, &outLeft);
        const int error = errno;
        EXPECT_EQ(close(converter), 0);
        if (result == static_cast<std::size_t>(-1))
            return error == EILSEQ ? "EILSEQ" : error == EINVAL ? "EINVAL" : "another error";
        EXPECT_EQ(inLeft, 0u);
        return {buffer, sizeof buffer - outLeft};
    }

    Converter (*open)(const char*, const char*) = nullptr;
    std::size_t (*convert)(Converter, const char**, std::size_t*, char**, std::size_t*) = nullptr;
    int (*close)(Converter) = nullptr;
};

TEST_F(CharacterSets, ConvertBetweenNamedSets)
{
    EXPECT_EQ(converted("UTF-8", "ISO-8859-1", recipientsLatin1), recipientsUtf8);
    EXPECT_EQ(converted("ISO-8859-1", "UTF-8", recipientsUtf8), recipientsLatin1);
    EXPECT_EQ(converted("UTF-16BE", "CP1252", "\x80"), "\x20\xac");
}

TEST_F(CharacterSets, ConvertIntoTheLocalesOwnSet)
{
    ASSERT_TRUE(std::setlocale(LC_ALL, "C.UTF-8"));
    EXPECT_EQ(converted("", "ISO-8859-1", recipientsLatin1), recipientsUtf8);
}

TEST_F(CharacterSets, TransliterateWhenAsked)
{
    EXPECT_EQ(converted("ASCII//TRANSLIT", "UTF-8", "\xe2\x80\x9cyes\xe2\x80\x9d"), "\"yes\"");
}

TEST_F(CharacterSets, TellBadTextFromAnUnfinishedOne)
{
    EXPECT_EQ(converted("ISO-8859-1", "UTF-8", "\xff"), "EILSEQ");
    EXPECT_EQ(converted("ISO-8859-1", "UTF-8", "\xc3"), "EINVAL");
}

TEST_F(CharacterSets, AreRefusedByUnknownName)
{
    errno = 0;
    EXPECT_EQ(open("UTF-8", "no-such-set"), failed());
    EXPECT_EQ(errno, EINVAL);
}

TEST_F(CharacterSets, HaveCanonicalNames)
{
    const auto canonical = find<const char*(const char*)>("iconv_canonicalize");
    EXPECT_STREQ(canonical("utf-8"), "UTF-8");
    EXPECT_STREQ(canonical("latin1"), "ISO-8859-1");
    EXPECT_STREQ(canonical("no-such-set"), "no-such-set");
}

} // namespace
