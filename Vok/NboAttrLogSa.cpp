// The two ends of a change stream, as clients see them.
#include "Vok/NboAttrLogSa.h"

#include "Vok/detail/BatchNode.h"
#include "Vok/detail/BatchReader.h"
#include "Vok/detail/BatchWriter.h"

namespace Vok {

EntityVokNboAttrLogSa::EntityVokNboAttrLogSa( const Corvo::Ptr< Entity > & root )
      : writer_( std::make_unique< Detail::BatchWriter >( root ) )
{
}

EntityVokNboAttrLogSa::~EntityVokNboAttrLogSa() = default;

bool EntityVokNboAttrLogSa::hasChanges() const noexcept
{
   return writer_->hasChanges();
}

void EntityVokNboAttrLogSa::write( NboAttrLog::Out & out )
{
   writer_->write( out );
}

void EntityVokNboAttrLogSa::resync() noexcept
{
   writer_->resync();
}

void EntityVokNboAttrLogSa::onPending( std::function< void() > f )
{
   writer_->onPending( std::move( f ) );
}

EntityVokNboAttrLogReader::EntityVokNboAttrLogReader( const Corvo::Ptr< Entity > & root )
      : reader_( std::make_unique< Detail::BatchReader >( root ) )
{
}

EntityVokNboAttrLogReader::~EntityVokNboAttrLogReader() = default;

void EntityVokNboAttrLogReader::read( NboAttrLog::In & in )
{
   reader_->read( in );
}

std::vector< Corvo::String > EntityVokNboAttrLogReader::passedOver() const
{
   return reader_->passedOver();
}

} // namespace Vok
