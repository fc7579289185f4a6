// A plug-in of clang-tidy that lets its checks look at the project's declarations only.
//
// clang-tidy reports nothing about the headers of others, yet by itself lets each check visit every
// declaration in them, for each source anew: most of its time. tools/tidy loads this plug-in; the static
// analyzer and the compiler's own warnings go their own ways and do not need it.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <clang-tidy/ClangTidyCheck.h>
#include <clang-tidy/ClangTidyModule.h>
#include <clang-tidy/ClangTidyModuleRegistry.h>
#include <clang/AST/ASTContext.h>
#include <clang/ASTMatchers/ASTMatchFinder.h>

#include <vector>

namespace {

using clang::ast_matchers::MatchFinder;

/// Matches the whole source, which comes ahead of all that is in it, and leaves of it what is no system
/// header's.
class ProjectOnly : public clang::tidy::ClangTidyCheck {
public:
    using ClangTidyCheck::ClangTidyCheck;

    void registerMatchers(MatchFinder* finder) override
    {
        finder->addMatcher(clang::ast_matchers::translationUnitDecl().bind("source"), this);
    }

    void check(const MatchFinder::MatchResult& result) override
    {
        std::vector<clang::Decl*> ours;
        // What was not read from a precompiled header until now is in it, and so of others.
        const auto* source = result.Nodes.getNodeAs<clang::TranslationUnitDecl>("source");
        for (clang::Decl* declaration : source->noload_decls()) {
            const auto place = result.SourceManager->getExpansionLoc(declaration->getLocation());
            if (place.isValid() && !result.SourceManager->isInSystemHeader(place))
                ours.push_back(declaration);
        }
        result.Context->setTraversalScope(ours);
    }
};

class ScopeModule : public clang::tidy::ClangTidyModule {
public:
    void addCheckFactories(clang::tidy::ClangTidyCheckFactories& factories) override
    {
        factories.registerCheck<ProjectOnly>("scope-project-only");
    }
};

const clang::tidy::ClangTidyModuleRegistry::Add<ScopeModule> registration("scope-module",
                                                                          "What checks look at.");

} // namespace
