#ifndef FOUNDATION_GUARD_H
#define FOUNDATION_GUARD_H

#include <foundation/Fatal.h>
#include <foundation/Raise.h>

#include <exception>
#include <string>

namespace Orvex
{

/// Runs the work of an entry point from which no failure may escape, because an event loop or the
/// end of a thread stands above it, and hands whatever was thrown to the report.
///
/// An Orvex::Exception reaches the report as it was thrown. Anything else becomes an Orvex::Fatal
/// with the given location, the one of the entry point. The guard returns normally in every case,
/// and the state stays as the failure left it.
/// The report is called with a const Orvex::Exception& and must not throw.
template <class Work, class Report>
void guard(const std::string& function, const std::string& file, unsigned long line, Work work,
           Report report)
{
    try {
        try {
            work();
        } catch (const Exception&) {
            throw;
        } catch (const std::exception& failure) {
            raise(Fatal(std::string("Processing aborted [") + failure.what() + "]"), function, file,
                  line);
        } catch (...) {
            raise(Fatal("Processing aborted [something strange...]"), function, file, line);
        }
    } catch (const Exception& failure) {
        report(failure);
    }
}

} // namespace Orvex

#endif
