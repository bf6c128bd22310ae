// SPDX-License-Identifier: MIT
// Load-time set-up: the framework finds its own bundle so that every title
// and value is looked up in its own strings tables, whichever application
// loaded it.
#include "CQelString.h"

#ifndef QEL_BUNDLE_IDENTIFIER
#error "QEL_BUNDLE_IDENTIFIER names the framework's bundle"
#endif

// The framework's bundle, or null when it could not be found; set once at load.
CFBundleRef g_myBundle = nullptr;

// Where CQelString looks keys up; null falls back to the host's main bundle.
// It lives here, with the routine that sets it, so that whatever uses the
// strings also brings in the load-time set-up.
CFBundleRef CQelString::m_bundle = nullptr;

// Runs once when the loader maps the library, before any host call.
__attribute__((constructor)) void MyFrameworkInit()
{
    g_myBundle = CFBundleGetBundleWithIdentifier(CFSTR(QEL_BUNDLE_IDENTIFIER));
    if (!g_myBundle)
        return;
    // The resource map stays open for the life of the process.
    CFBundleOpenBundleResourceMap(g_myBundle);
    CQelString::m_bundle = g_myBundle;
}
