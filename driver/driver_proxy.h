#pragma once

#include <cstdint>
#include <memory>

#include "driver/kq_def.h"
#include "platform/base/export.h"

namespace kq_drv {

struct TDriverState;

/// Codes of failures that the proxy itself finds. All others come from the driver, which knows their texts
/// (QueryErrorCode).
enum TDriverCode : std::uint32_t {
    kNoBufferInfo = 0xE1201041,       ///< the module has no BufferInfo
    kNoSetBufferAddr = 0xE1201042,    ///< no SetBufferAddr
    kNoQueryProc = 0xE1201043,        ///< no QueryProc of any generation
    kBufferInfoRefused = 0xE1201044,  ///< BufferInfo: the driver refused
    kNoGetInput = 0xE1201046,         ///< no GetInput of any generation, or no driver; likewise the next three
    kNoInputFinalized = 0xE1201047,   ///< no InputFinalized
    kNoOutputRequest = 0xE1201048,    ///< no OutputRequest of any generation
    kNoOutputFinalized = 0xE1201049,  ///< no OutputFinalized
    kForeignText = 0xE120104B,        ///< the driver's text isn't in the room that it was given, or longer than that
    kForeignBuffer = 0xE120104C,      ///< the driver changed where a buffer lies
    kRoomNotGrown = 0xE120104D,  ///< the driver wants more room, but names no more than it had, or over 67,108,864;
                                 ///< or memory for a string is short
    kRoomTwice = 0xE120104E,     ///< the driver wants more room a second time
};

/// Stands between a host and one driver in a loaded module, and gives the host one form of call, whatever the module's
/// text width and generation. A host drives it in this order:
///
///     CDriver driver;                                  // or a class derived from it, for the callbacks
///     driver.Init(module);                             // the handle that dlopen gives; the module stays the host's
///     driver.Initialize(255, error, 0, 0, "Line1");    // makes the driver
///     driver.ReadParameters(0, path, 255, error, a, b, 255, detail);
///     // optionally the driver's channels, and its buffers
///     driver.Run();
///     // rounds: InputRequestStart to GetInput, OutputRequestStart to OutputFinalized
///     driver.Stop();
///     driver.Done();                                   // then the module may be freed
///
/// Nothing watches over that order, but an operation that comes too early, or after Done, reaches no driver: it answers
/// like one whose entry the module lacks. Only AbleToEnumerateChannels goes by the entries alone.
///
/// Values are scalars, buffers, or strings in the form of tag kTagDString (driver/value_string.h); the other forms of
/// text are the driver's alone. Texts to the caller go to a buffer given by its highest valid index and its address.
/// Texts from the caller are an address and a length, or 0 for up to the terminator; a terminator ends them earlier.
///
/// There are no locks and no threads. A string needs the proxy's own room on its way, so one operation with strings
/// runs at a time on a proxy and all its copies. A copy is the same driver once more: one of the holders calls Done,
/// and no other one uses the driver after that. The driver knows the proxy that made it as its context and calls it
/// back there, so that one must not be moved or destroyed while the driver exists.
///
/// Construction and copies may throw std::bad_alloc. No operation throws: one that memory doesn't suffice for answers
/// false, with the code kRoomNotGrown or a text.
///
/// The virtual operations keep their order: hosts that were compiled earlier find them by it.
///
/// Where the members are:
///   driver_proxy.cpp    construction, Init, Version, GetDriverInfo, Initialize, ReadParameters, Done
///   driver_forward.cpp  all that pass a call on: QueryErrorCode to Stop, the rounds, buffers, DriverProc, callbacks
///   driver_input.cpp    GetInput
///   driver_output.cpp   OutputRequest, QueryProc
class KQ_API CDriver {
public:
    CDriver();
    CDriver(const CDriver &other);
    CDriver &operator=(const CDriver &other);

    /// Takes a module to make a driver in. Says nothing about a wrong one; Initialize does.
    void Init(void *module);

    /// The module's version number; false if it isn't a driver module. Untouched then.
    virtual bool Version(std::uint32_t &version);
    /// What the module says about itself, up to 255 characters; false if it isn't a driver module.
    virtual bool GetDriverInfo(std::uint32_t high, char *text);

    /// Finds the module's entries and makes the driver. The instance counts the drivers that a host makes from one
    /// module, 0 being the first; the name, up to 63 characters, is the driver's and is part of messages. False names
    /// the entry that is missing, or says that the module makes no driver.
    virtual bool Initialize(std::uint32_t error_high, char *error, std::uint32_t instance, std::uint32_t name_high,
                            const char *name);
    /// Lets the driver read its parameter file; the path may have 259 characters. The two numbers and the second text
    /// are the driver's to use: a driver of generation 1 leaves them 0 and empty, and the text comes on false only.
    /// False gives the driver's error, up to 255 characters.
    virtual bool ReadParameters(std::uint32_t path_high, const char *path, std::uint32_t error_high, char *error,
                                std::uint32_t &a, std::uint32_t &b, std::uint32_t text_high, char *text);
    /// The text of one of the driver's codes, up to 255 characters; false, and no text, for a code that it doesn't
    /// know.
    virtual bool QueryErrorCode(std::uint32_t code, std::uint32_t high, char *text);

    /// Can the driver list its channels? If needs_init3 isn't 0, it must be of generation 3 too. Needs Initialize.
    virtual bool AbleToEnumerateChannels(std::uint8_t needs_init3);
    /// The next block of the driver's channels. The cookie is 0 at the start and then the driver's to change. False
    /// after the last block. The direction is written only with true.
    virtual bool EnumerateChannels(unsigned long &cookie, std::uint32_t &type, kq_def::TDirection &direction,
                                   std::uint32_t &first, std::uint32_t &count, std::uint8_t &flag);
    /// What a channel is, up to 255 characters, and a second text of up to 63; false, and no text, if the driver
    /// doesn't know.
    virtual bool GetChannelDescription(std::uint32_t channel, std::uint32_t high, char *text, std::uint32_t second_high,
                                       char *second);

    virtual void Run();
    virtual void Stop();
    /// Ends the driver.
    virtual void Done();

    /// An input round: start, each channel that is wanted, completed, then finalized until the driver answers true,
    /// then GetInput for each value. Numbers that aren't channels are between host and driver.
    virtual void InputRequestStart();
    virtual void InputRequest(std::uint32_t channel);
    virtual void InputRequestCompleted();
    virtual bool InputFinalized(std::uint32_t number, std::uint32_t &code);
    /// Asks for data outside the round; false if the driver has none or no such entry.
    virtual bool InputOOBDataQuery(unsigned long &a, std::uint32_t &b);
    /// Fetches a channel's value. The value's tag says on entry what the caller expects. A string goes into the
    /// caller's TDStringA, or into a new one if the value has none; a buffer's pointer stays the caller's.
    ///
    /// True if the code is 0. With a failure that the proxy found, or a string for which the driver gave a code, the
    /// whole value is zero, so a caller needs its own pointer to its string; another value for which the driver gave a
    /// code stays as the driver left it. The status of a scalar is 500 if the driver is of generation 1; strings and
    /// buffers then leave it alone, and the stamp is never touched.
    virtual bool GetInput(std::uint32_t &code, std::uint32_t channel, kq_def::TValue *value, std::uint32_t &status,
                          kq_def::TUTCStamp *stamp);

    /// An output round: start, each value, completed, then finalized until the driver answers true.
    virtual void OutputRequestStart();
    /// Hands over a value. Drivers of generation 1 and 2 get 255 characters of a string, generation 3 gets all; they
    /// read it during the call and never write it. The code is written only with false.
    virtual bool OutputRequest(std::uint32_t &code, std::uint32_t channel, kq_def::TValue value, std::uint32_t status,
                               kq_def::TUTCStamp *stamp);
    virtual void OutputRequestCompleted();
    virtual bool OutputFinalized(std::uint32_t number, std::uint32_t &code);

    /// Tells the driver about a buffer. The code is written in any case and means something with false only.
    virtual bool BufferInfo(std::uint32_t &code, std::uint32_t a, std::uint8_t b, std::uint32_t c);
    /// Tells the driver where a buffer lies. The code is written only with false.
    virtual bool SetBufferAddr(std::uint32_t &code, std::uint32_t a, void *memory);

    /// Five numbers for the driver.
    virtual void DriverProc(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d, std::uint32_t e);
    /// A question and its answer. Out holds the answer's present value on entry, of which a driver of generation 1 sees
    /// only a string. Each way generation 1 gets 255 characters of a string, generation 3 gets all. With a string in
    /// either value true means that the code is 0; otherwise the code is written only with false.
    virtual bool QueryProc(std::uint32_t &code, kq_def::TValue in, kq_def::TValue *out);

    /// The driver calls back, a wide one through W, except from the Init of generation 1, which always gets A. What
    /// number and pointer mean is between the driver and a host's subclass; without one the answer is 0xFFFFFFFF.
    virtual std::uint32_t DriverCallBackA(std::uint32_t number, void *pointer);
    virtual std::uint32_t DriverCallBackW(std::uint32_t number, void *pointer);

    virtual ~CDriver();

private:
    std::unique_ptr<TDriverState> state_;
};

/// Prepares the namespace. May be called any number of times.
KQ_API void Init_();

}  // namespace kq_drv

/// The callbacks that drivers get, with a CDriver as context: they call its DriverCallBackA or W. Without a context the
/// answer is 0xFFFFFFFF.
extern "C" KQ_API std::uint32_t KQDriverCallback(void *context, std::uint32_t number, void *pointer);
extern "C" KQ_API std::uint32_t KQDriverCallbackW(void *context, std::uint32_t number, void *pointer);
