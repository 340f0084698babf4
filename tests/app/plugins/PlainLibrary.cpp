/// A library that is no plug-in at all.
extern "C" int ormAnswer()
{
    return 42;
}
