#pragma once
// Fixtures of the fetch layer's tests: a throwaway profile, time limits shortened a
// hundredfold (30 seconds become 300 ms) and, for the unit tests, scripted children.

#include "core/clock.h"
#include "core/log.h"
#include "retrieval/fetch.h"
#include "tests/retrieval/scriptedchildren.h"
#include "tests/support/testprofile.h"

#include <QDir>

namespace Tarnby::Test
{

class FetchTest : public ProfileTest
{
protected:
    FetchTest() { setFetchTimeScale(0.01); }
    ~FetchTest() override
    {
        setFetchTimeScale(1.0);
        setClock(nullptr);
        setRemoteLogSink({});
        setMessageBoxSink({});
    }
    QStringList tempFiles() const { return QDir(TempFolder()).entryList(QDir::Files); }
};

class ScriptedFetchTest : public FetchTest
{
protected:
    ScriptedChildren children;
};

} // namespace Tarnby::Test
