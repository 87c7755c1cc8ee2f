<?xml version="1.0"?>
<!-- From abidw's description of the library to a text of one fact a line: what a program that was
     compiled against the public headers depends on. "./dev abi" compares it with the stored one. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="text" encoding="UTF-8"/>
  <xsl:key name="type" match="*[@id]" use="@id"/>
  <xsl:key name="function" match="function-decl" use="@elf-symbol-id"/>
  <!-- Some are only described as declared: by their mangled names or, as C functions, by their names. -->
  <xsl:key name="function" match="function-decl[not(@elf-symbol-id)]" use="@mangled-name"/>
  <xsl:key name="function" match="function-decl[not(@elf-symbol-id or @mangled-name)]" use="@name"/>

  <xsl:template match="/">
    <xsl:text># Enumerations: width and values&#10;</xsl:text>
    <xsl:apply-templates mode="public"
        select="//enum-decl[generate-id() = generate-id(key('type', @id)[1])]">
      <xsl:sort select="concat(ancestor::class-decl[1]/@name, '::', @name)"/>
    </xsl:apply-templates>
    <xsl:text>&#10;# Classes: size in bits, bases and members with their offsets, virtual slots&#10;</xsl:text>
    <xsl:apply-templates mode="public"
        select="//class-decl[not(@is-declaration-only) and generate-id() = generate-id(key('type', @id)[1])]">
      <xsl:sort select="concat(ancestor::class-decl[1]/@name, '::', @name)"/>
    </xsl:apply-templates>
    <xsl:text>&#10;# Exported symbols: functions with what they return and take, objects with their size&#10;</xsl:text>
    <xsl:apply-templates select="(//elf-function-symbols | //elf-variable-symbols)/elf-symbol">
      <xsl:sort select="@name"/>
    </xsl:apply-templates>
  </xsl:template>

  <!-- Weak ones are mostly inline functions and templates, which each program has for itself. -->
  <xsl:template match="elf-symbol"/>
  <xsl:template match="elf-symbol[@binding = 'global-binding']">
    <xsl:apply-templates select="." mode="describe"/>
  </xsl:template>

  <!-- What is known of a class at run time, for classes outside of std:: (the mangled name has their
       names' length there, after "N" in a namespace). Other compilers make some of it strong. -->
  <xsl:template match="elf-symbol[starts-with(@name, '_ZTV') or starts-with(@name, '_ZTI') or
                                  starts-with(@name, '_ZTS')]">
    <xsl:variable name="class" select="substring(@name, 5)"/>
    <xsl:variable name="first"
        select="substring($class, 1 + number(starts-with($class, 'N')), 1)"/>
    <xsl:if test="contains('123456789', $first) and not(starts-with($class, 'N9__gnu_cxx'))">
      <xsl:apply-templates select="." mode="describe"/>
    </xsl:if>
  </xsl:template>

  <!-- Templates that the library instantiates for the programs, which have no definition of them. -->
  <xsl:template match="elf-symbol[@type = 'func-type' and @binding = 'weak-binding']">
    <xsl:variable name="file" select="key('function', @name)[1]/@filepath"/>
    <xsl:if test="substring($file, string-length($file) - 3) = '.cpp'">
      <xsl:apply-templates select="." mode="describe"/>
    </xsl:if>
  </xsl:template>

  <xsl:template match="elf-symbol" mode="describe">
    <xsl:value-of select="@name"/>
    <xsl:if test="@type = 'object-type'"><xsl:value-of select="concat(' ', @size)"/></xsl:if>
    <xsl:apply-templates select="key('function', @name)[1]" mode="signature"/>
    <xsl:text>&#10;</xsl:text>
  </xsl:template>

  <!-- " int(const QString&)" -->
  <xsl:template match="function-decl | function-type" mode="signature">
    <xsl:text> </xsl:text>
    <xsl:apply-templates select="." mode="name"/>
  </xsl:template>
  <xsl:template match="function-decl | function-type" mode="name">
    <xsl:apply-templates select="key('type', return/@type-id)[1]" mode="name"/>
    <xsl:text>(</xsl:text>
    <xsl:for-each select="parameter[not(@is-artificial = 'yes')]">
      <xsl:if test="position() > 1">, </xsl:if>
      <xsl:choose>
        <xsl:when test="@is-variadic = 'yes'">...</xsl:when>
        <xsl:otherwise><xsl:apply-templates select="key('type', @type-id)[1]" mode="name"/></xsl:otherwise>
      </xsl:choose>
    </xsl:for-each>
    <xsl:text>)</xsl:text>
  </xsl:template>

  <!-- Only what the public headers declare. -->
  <xsl:template match="*" mode="public"/>
  <xsl:template mode="public"
      match="*[(data-member or member-function or enumerator) and
               contains(@filepath, 'printshared/src/') and not(contains(@filepath, '_p.h')) and
               substring(@filepath, string-length(@filepath) - 1) = '.h']">
    <xsl:apply-templates select="." mode="describe"/>
  </xsl:template>

  <xsl:template name="qualified">
    <xsl:for-each select="ancestor::class-decl | ancestor::namespace-decl">
      <xsl:value-of select="concat(@name, '::')"/>
    </xsl:for-each>
    <xsl:value-of select="@name"/>
  </xsl:template>

  <xsl:template match="enum-decl" mode="describe">
    <xsl:text>enum </xsl:text><xsl:call-template name="qualified"/>
    <xsl:text> : </xsl:text>
    <xsl:apply-templates select="key('type', underlying-type/@type-id)[1]" mode="name"/>
    <xsl:value-of select="concat(' ', key('type', underlying-type/@type-id)[1]/@size-in-bits, '&#10;')"/>
    <xsl:for-each select="enumerator">
      <xsl:value-of select="concat('    ', @name, ' = ', @value, '&#10;')"/>
    </xsl:for-each>
  </xsl:template>

  <xsl:template match="class-decl" mode="describe">
    <xsl:text>class </xsl:text><xsl:call-template name="qualified"/>
    <xsl:value-of select="concat(' ', @size-in-bits, '&#10;')"/>
    <xsl:for-each select="base-class">
      <xsl:value-of select="concat('    base ', @layout-offset-in-bits, ' ')"/>
      <xsl:if test="@is-virtual = 'yes'">virtual </xsl:if>
      <xsl:apply-templates select="key('type', @type-id)[1]" mode="name"/>
      <xsl:text>&#10;</xsl:text>
    </xsl:for-each>
    <xsl:for-each select="data-member">
      <xsl:value-of select="concat('    ', @access, ' ')"/>
      <xsl:choose>
        <xsl:when test="@static = 'yes'">static</xsl:when>
        <xsl:otherwise><xsl:value-of select="@layout-offset-in-bits"/></xsl:otherwise>
      </xsl:choose>
      <xsl:value-of select="concat(' ', var-decl/@name, ': ')"/>
      <xsl:apply-templates select="key('type', var-decl/@type-id)[1]" mode="name"/>
      <xsl:text>&#10;</xsl:text>
    </xsl:for-each>
    <xsl:for-each select="member-function[@vtable-offset >= 0]">
      <xsl:sort select="@vtable-offset" data-type="number"/>
      <xsl:sort select="function-decl/@mangled-name"/>
      <xsl:value-of select="concat('    slot ', @vtable-offset, ' ', function-decl/@mangled-name)"/>
      <xsl:apply-templates select="function-decl" mode="signature"/>
      <xsl:text>&#10;</xsl:text>
    </xsl:for-each>
  </xsl:template>

  <xsl:template match="*" mode="name"><xsl:value-of select="@name"/></xsl:template>
  <xsl:template match="qualified-type-def" mode="name">
    <xsl:variable name="type" select="key('type', @type-id)[1]"/>
    <xsl:if test="@const = 'yes' and not($type/self::pointer-type-def)">const </xsl:if>
    <xsl:apply-templates select="$type" mode="name"/>
    <xsl:if test="@const = 'yes' and $type/self::pointer-type-def"> const</xsl:if>
  </xsl:template>
  <xsl:template match="pointer-type-def" mode="name">
    <xsl:apply-templates select="key('type', @type-id)[1]" mode="name"/><xsl:text>*</xsl:text>
  </xsl:template>
  <xsl:template match="reference-type-def" mode="name">
    <xsl:apply-templates select="key('type', @type-id)[1]" mode="name"/><xsl:text>&amp;</xsl:text>
    <xsl:if test="@kind = 'rvalue'">&amp;</xsl:if>
  </xsl:template>
  <xsl:template match="array-type-def" mode="name">
    <xsl:apply-templates select="key('type', @type-id)[1]" mode="name"/>
    <xsl:value-of select="concat('[', subrange/@length, ']')"/>
  </xsl:template>
</xsl:stylesheet>
