<?xml version="1.0" encoding="UTF-8"?>
<!-- What a stylesheet processor needs to give the same answer: every object that the view "view.half"
     includes, with its name, path and reference. For generated models only: it knows neither role-based
     views nor shortcuts to anything but query subjects. -->
<xsl:stylesheet version="2.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="xml" encoding="UTF-8" omit-xml-declaration="yes"/>

  <xsl:key name="included" use="."
           match="/model/securityViews/securityView[@id='view.half']/set[@kind='included']/item"/>
  <xsl:key name="subject" match="querySubject"
           use="concat('[', ancestor::namespace[1]/property[@name='name'][@locale='en'], '].[',
                property[@name='name'][@locale='en'], ']')"/>

  <xsl:template match="/">
    <Response>
      <Result>
        <xsl:variable name="root" select="/model/namespace[1]"/>
        <xsl:variable name="name" select="$root/property[@name='name'][@locale='en']"/>
        <folder name="{$name}" _path="[{$name}]" _ref="[{$name}]">
          <xsl:call-template name="members">
            <xsl:with-param name="of" select="$root"/>
            <xsl:with-param name="path" select="concat('[', $name, ']')"/>
            <xsl:with-param name="reference" select="concat('[', $name, ']')"/>
          </xsl:call-template>
        </folder>
      </Result>
    </Response>
  </xsl:template>

  <xsl:template name="members">
    <xsl:param name="of"/>
    <xsl:param name="path"/>
    <xsl:param name="reference"/>
    <xsl:param name="all" select="false()"/>
    <xsl:apply-templates select="$of/folder">
      <xsl:with-param name="above" select="$path"/>
      <xsl:with-param name="outer" select="$reference"/>
      <xsl:with-param name="all" select="$all"/>
    </xsl:apply-templates>
    <xsl:apply-templates select="$of/querySubject">
      <xsl:with-param name="above" select="$path"/>
      <xsl:with-param name="outer" select="$reference"/>
      <xsl:with-param name="all" select="$all"/>
    </xsl:apply-templates>
    <xsl:apply-templates select="$of/queryItemFolder">
      <xsl:with-param name="above" select="$path"/>
      <xsl:with-param name="outer" select="$reference"/>
      <xsl:with-param name="all" select="$all"/>
    </xsl:apply-templates>
    <xsl:apply-templates select="$of/queryItem">
      <xsl:with-param name="above" select="$path"/>
      <xsl:with-param name="outer" select="$reference"/>
      <xsl:with-param name="all" select="$all"/>
    </xsl:apply-templates>
    <xsl:apply-templates select="$of/filter">
      <xsl:with-param name="above" select="$path"/>
      <xsl:with-param name="outer" select="$reference"/>
      <xsl:with-param name="all" select="$all"/>
    </xsl:apply-templates>
    <xsl:apply-templates select="$of/calculation">
      <xsl:with-param name="above" select="$path"/>
      <xsl:with-param name="outer" select="$reference"/>
      <xsl:with-param name="all" select="$all"/>
    </xsl:apply-templates>
    <xsl:apply-templates select="$of/shortcut">
      <xsl:with-param name="above" select="$path"/>
    </xsl:apply-templates>
    <xsl:apply-templates select="$of/namespace">
      <xsl:with-param name="above" select="$path"/>
      <xsl:with-param name="outer" select="$reference"/>
      <xsl:with-param name="all" select="$all"/>
    </xsl:apply-templates>
  </xsl:template>

  <xsl:template match="folder|querySubject|queryItemFolder|queryItem|filter|calculation|namespace">
    <xsl:param name="above"/>
    <xsl:param name="outer"/>
    <xsl:param name="all"/>
    <xsl:variable name="name" select="property[@name='name'][@locale='en']"/>
    <xsl:variable name="path" select="concat($above, '.[', $name, ']')"/>
    <xsl:variable name="reference">
      <xsl:choose>
        <xsl:when test="self::namespace">[<xsl:value-of select="$name"/>]</xsl:when>
        <xsl:when test="self::folder or self::queryItemFolder">
          <xsl:value-of select="$outer"/>
        </xsl:when>
        <xsl:otherwise><xsl:value-of select="concat($outer, '.[', $name, ']')"/></xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:choose>
      <xsl:when test="$all or key('included', @id)">
        <xsl:variable name="tag">
          <xsl:choose>
            <xsl:when test="self::namespace">folder</xsl:when>
            <xsl:otherwise><xsl:value-of select="name()"/></xsl:otherwise>
          </xsl:choose>
        </xsl:variable>
        <xsl:element name="{$tag}">
          <xsl:attribute name="name"><xsl:value-of select="$name"/></xsl:attribute>
          <xsl:attribute name="_path"><xsl:value-of select="$path"/></xsl:attribute>
          <xsl:attribute name="_ref"><xsl:value-of select="$reference"/></xsl:attribute>
          <xsl:call-template name="members">
            <xsl:with-param name="of" select="."/>
            <xsl:with-param name="path" select="$path"/>
            <xsl:with-param name="reference" select="$reference"/>
            <xsl:with-param name="all" select="$all"/>
          </xsl:call-template>
        </xsl:element>
      </xsl:when>
      <xsl:otherwise>
        <xsl:call-template name="members">
          <xsl:with-param name="of" select="."/>
          <xsl:with-param name="path" select="$path"/>
          <xsl:with-param name="reference" select="$reference"/>
          <xsl:with-param name="all" select="$all"/>
        </xsl:call-template>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- A shortcut stands as its target under its own name; no view restricts what is in it. -->
  <xsl:template match="shortcut">
    <xsl:param name="above"/>
    <xsl:variable name="name" select="property[@name='name'][@locale='en']"/>
    <xsl:variable name="path" select="concat($above, '.[', $name, ']')"/>
    <xsl:variable name="reference"
                  select="concat('[', ancestor::namespace[1]/property[@name='name'][@locale='en'], ']')"/>
    <querySubject name="{$name}" _path="{$path}" _ref="{$reference}">
      <xsl:call-template name="members">
        <xsl:with-param name="of" select="key('subject', @refobj)"/>
        <xsl:with-param name="path" select="$path"/>
        <xsl:with-param name="reference" select="$reference"/>
        <xsl:with-param name="all" select="true()"/>
      </xsl:call-template>
    </querySubject>
  </xsl:template>
</xsl:stylesheet>
