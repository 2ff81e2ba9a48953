// The exceptions of the framework. Each derives from std::exception, and what() is the whole
// message.
#pragma once

#include "Vok/Export.h"

#include <cstddef>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>

namespace Corvo {

/// A bound is violated. The message names the type, the field and both bounds.
class VOK_EXPORT RangeException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;

   /// Throws a RangeException with this message.
   [[noreturn]] static void throwException( const char * message );
};

/// A code or a name that the enumeration lacks.
class VOK_EXPORT EnumRangeException : public RangeException {
 public:
   using RangeException::RangeException;
};

/// A field inside a composite text violated a bound: which one, and what it said.
class VOK_EXPORT DeserializationException : public RangeException {
 public:
   /// `attribute` is the field; the message joins it with what the field itself reported.
   DeserializationException( std::string_view attribute, std::string_view fieldMessage );

   /// As above, with the whole message given.
   explicit DeserializationException( std::string_view message );

   /// The name of the field that failed; empty where only a message was given.
   const std::string & attribute() const noexcept { return attribute_; }

 private:
   std::string attribute_;
};

/// A text does not match the grammar of what it should be.
class VOK_EXPORT ParseException : public std::runtime_error {
 public:
   /// `offset` is the position in the text, in bytes from its start.
   explicit ParseException( const std::string & message, std::size_t offset = 0 );

   std::size_t offset() const noexcept { return offset_; }

 private:
   std::size_t offset_;
};

/// A child exists under the key, with other constant constructor arguments.
class VOK_EXPORT ReinstantiationException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// An entity is instantiated with more or fewer arguments than it takes, or with one that cannot
/// be given as text.
class VOK_EXPORT ConstructorArgsException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// An empty pointer is given to a reference collection.
class VOK_EXPORT NullPointerException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

/// Reflection is asked for the hash of a type that has none.
class VOK_EXPORT NotHashableException : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

} // namespace Corvo

namespace Vok::NboAttrLog {

/// An attribute log is cut short or malformed, or carries what this side refuses.
class VOK_EXPORT Exception : public std::runtime_error {
 public:
   using std::runtime_error::runtime_error;
};

} // namespace Vok::NboAttrLog
