// Corvo::ModuleInspectData, the reflection object of a module, and the registry of all of them.
#pragma once

#include "Vok/Export.h"
#include "Vok/TypeData.h"
#include "Vok/detail/Tables.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace Vok::Detail {

/// What a module's reflection object is made of.
struct ModuleRow {
   std::string_view name = {};
   std::string_view documentation = {};
   std::uint64_t fingerprint = 0;
   Rows< const TypeData * > types = {};
   Rows< const Corvo::ModuleInspectData & (*)() noexcept > uses = {};
};

} // namespace Vok::Detail

namespace Corvo {

/// The reflection data of one module: its types in declared order, and a fingerprint of their
/// definitions. Each is a static object that registers itself when its library is loaded.
class VOK_EXPORT ModuleInspectData {
 public:
   using Use = const ModuleInspectData & (*)() noexcept;

   constexpr explicit ModuleInspectData( const Vok::Detail::ModuleRow & row ) noexcept : row_( row )
   {
   }
   ModuleInspectData( const ModuleInspectData & ) = delete;
   ModuleInspectData & operator=( const ModuleInspectData & ) = delete;

   std::string_view name() const noexcept { return row_.name; }
   std::string_view documentation() const noexcept { return row_.documentation; }

   /// 64 bits that follow from everything the module defines; comments and white space do not
   /// count.
   std::uint64_t fingerprint() const noexcept { return row_.fingerprint; }

   class TypeRange;
   class ModuleRange;

   /// Every type, in declared order.
   TypeRange types() const noexcept;

   /// Registers a module, after those that it uses; registering twice is once. Allocates nothing.
   static void loaded( const ModuleInspectData & module ) noexcept;

   /// Every registered module, in order of registration.
   static ModuleRange modules() noexcept;

   /// The type of that full name in any registered module, or null.
   static const Vok::TypeData * findType( std::string_view name ) noexcept;

 private:
   friend class ModuleRange;

   Vok::Detail::ModuleRow row_;
   mutable const ModuleInspectData * next_ = nullptr;
   mutable bool registered_ = false;
};

/// A range of `const Vok::TypeData &`.
class ModuleInspectData::TypeRange {
 public:
   class iterator {
    public:
      using iterator_category = std::forward_iterator_tag;
      using value_type = Vok::TypeData;
      using difference_type = std::ptrdiff_t;
      using pointer = const Vok::TypeData *;
      using reference = const Vok::TypeData &;

      iterator() noexcept = default;
      explicit iterator( const Vok::TypeData * const * at ) noexcept : at_( at ) {}
      reference operator*() const noexcept { return **at_; }
      pointer operator->() const noexcept { return *at_; }
      iterator & operator++() noexcept
      {
         ++at_;
         return *this;
      }
      iterator operator++( int ) noexcept { return iterator( at_++ ); }
      friend bool operator==( iterator a, iterator b ) noexcept = default;

    private:
      const Vok::TypeData * const * at_ = nullptr;
   };

   explicit TypeRange( Vok::Detail::Rows< const Vok::TypeData * > rows ) noexcept : rows_( rows ) {}
   iterator begin() const noexcept { return iterator( rows_.begin() ); }
   iterator end() const noexcept { return iterator( rows_.end() ); }
   std::size_t size() const noexcept { return rows_.count; }
   bool empty() const noexcept { return rows_.count == 0; }
   const Vok::TypeData & operator[]( std::size_t i ) const noexcept { return *rows_.first[ i ]; }

 private:
   Vok::Detail::Rows< const Vok::TypeData * > rows_;
};

/// A range of `const Corvo::ModuleInspectData &`.
class ModuleInspectData::ModuleRange {
 public:
   class iterator {
    public:
      using iterator_category = std::forward_iterator_tag;
      using value_type = ModuleInspectData;
      using difference_type = std::ptrdiff_t;
      using pointer = const ModuleInspectData *;
      using reference = const ModuleInspectData &;

      iterator() noexcept = default;
      explicit iterator( const ModuleInspectData * at ) noexcept : at_( at ) {}
      reference operator*() const noexcept { return *at_; }
      pointer operator->() const noexcept { return at_; }
      iterator & operator++() noexcept
      {
         at_ = after( *at_ );
         return *this;
      }
      iterator operator++( int ) noexcept
      {
         const iterator before = *this;
         ++*this;
         return before;
      }
      friend bool operator==( iterator a, iterator b ) noexcept = default;

    private:
      const ModuleInspectData * at_ = nullptr;
   };

   explicit ModuleRange( const ModuleInspectData * first ) noexcept : first_( first ) {}
   iterator begin() const noexcept { return iterator( first_ ); }
   iterator end() const noexcept { return iterator(); }
   bool empty() const noexcept { return !first_; }

   /// Counts; the list is short.
   std::size_t size() const noexcept
   {
      return static_cast< std::size_t >( std::distance( begin(), end() ) );
   }

 private:
   VOK_EXPORT static const ModuleInspectData * after( const ModuleInspectData & module ) noexcept;

   const ModuleInspectData * first_;
};

inline ModuleInspectData::TypeRange ModuleInspectData::types() const noexcept
{
   return TypeRange( row_.types );
}

} // namespace Corvo

namespace Vok::Detail {

/// Registers a module from the static initialiser of its generated code.
struct ModuleRegistration {
   explicit ModuleRegistration( const Corvo::ModuleInspectData & module ) noexcept
   {
      Corvo::ModuleInspectData::loaded( module );
   }
};

} // namespace Vok::Detail
